#include "ui/calendar/calendar_accessible.h"

#include <QAccessibleWidget>
#include <QTimer>

#include "ui/calendar/calendar_grid.h"
#include "ui/look/accessible_item.h"
#include "ui/look/qt_text.h"

namespace lore {
namespace {

/// One day, with what falls on it as its text.
class AccessibleDay : public AccessibleOpener {
public:
    AccessibleDay(CalendarGrid& grid, int cell)
        : AccessibleOpener(grid, QAccessible::Cell), grid_(&grid), cell_(cell) {}

    bool isValid() const override { return cell_ < grid_->View().Grid().Cells(); }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? ToQString(grid_->View().CellText(cell_)) : QString();
    }
    QRect rect() const override { return grid_->CellRect(cell_).translated(grid_->mapToGlobal(QPoint())); }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.selectable = state.focusable = true;
        state.selected = isValid() && grid_->View().IsSelected(cell_);
        state.focused = grid_->hasFocus() && grid_->View().CurrentCell() == cell_;
        return state;
    }

protected:
    void Open() override {
        const DateTime day = grid_->View().Grid().DayOf(cell_);
        QTimer::singleShot(0, grid_, [grid = grid_, day] { emit grid->DayAsked(day); });
    }

private:
    CalendarGrid* grid_;
    int cell_;
};

class AccessibleGrid : public QAccessibleWidget {
public:
    explicit AccessibleGrid(CalendarGrid& grid) : QAccessibleWidget(&grid, QAccessible::Table), grid_(grid) {}
    int childCount() const override { return grid_.View().Grid().Cells(); }
    QAccessibleInterface* child(int cell) const override {
        if (cell < 0 || cell >= childCount())
            return nullptr;
        return days_.At(cell, [this, cell] { return new AccessibleDay(grid_, cell); });
    }
    int indexOfChild(const QAccessibleInterface* child) const override { return days_.NumberOf(child); }
    QAccessibleInterface* childAt(int x, int y) const override {
        return child(grid_.CellAt(grid_.mapFromGlobal(QPoint(x, y))));
    }
    QAccessibleInterface* focusChild() const override { return child(grid_.View().CurrentCell()); }

private:
    CalendarGrid& grid_;
    mutable AccessibleItems days_;  // by cell
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    auto* const grid = qobject_cast<CalendarGrid*>(object);
    return grid ? new AccessibleGrid(*grid) : nullptr;
}

}  // namespace

void InstallCalendarAccessibility() {
    QAccessible::installFactory(MakeAccessible);
}

}  // namespace lore
