#include "ui/calendar/calendar_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <map>

#include "ui/calendar/calendar_grid.h"
#include "ui/look/qt_text.h"

namespace lore {
namespace {

/// One day, with what falls on it as its text.
class AccessibleDay : public QAccessibleInterface {
public:
    AccessibleDay(CalendarGrid& grid, int cell) : grid_(&grid), cell_(cell) {}

    bool isValid() const override { return cell_ < grid_->View().Grid().Cells(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(grid_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    void setText(QAccessible::Text, const QString&) override {}
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

private:
    CalendarGrid* grid_;
    int cell_;
};

class AccessibleGrid : public QAccessibleWidget {
public:
    explicit AccessibleGrid(CalendarGrid& grid) : QAccessibleWidget(&grid, QAccessible::Table), grid_(grid) {}
    ~AccessibleGrid() override {
        for (const auto& [cell, id] : days_)
            QAccessible::deleteAccessibleInterface(id);
    }
    int childCount() const override { return grid_.View().Grid().Cells(); }
    QAccessibleInterface* child(int cell) const override {
        if (cell < 0 || cell >= childCount())
            return nullptr;
        const auto [entry, isNew] = days_.try_emplace(cell, 0);
        if (isNew)
            entry->second = QAccessible::registerAccessibleInterface(new AccessibleDay(grid_, cell));
        return QAccessible::accessibleInterface(entry->second);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (const auto& [cell, id] : days_) {
            if (QAccessible::accessibleInterface(id) == child)
                return cell;
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        return child(grid_.CellAt(grid_.mapFromGlobal(QPoint(x, y))));
    }
    QAccessibleInterface* focusChild() const override { return child(grid_.View().CurrentCell()); }

private:
    CalendarGrid& grid_;
    mutable std::map<int, QAccessible::Id> days_;  // by cell
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
