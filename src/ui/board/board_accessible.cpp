#include "ui/board/board_accessible.h"

#include <QAccessibleWidget>
#include <QTimer>

#include "ui/board/board_empty_pane.h"
#include "ui/board/board_view.h"
#include "ui/look/accessible_item.h"

namespace lore {
namespace {

/// One card: an item of the list, with the note as its text.
class AccessibleCard : public AccessibleOpener {
public:
    AccessibleCard(BoardView& board, int row)
        : AccessibleOpener(board, QAccessible::ListItem), board_(&board), row_(row) {}

    bool isValid() const override { return row_ < board_->Model().Count(); }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? board_->CardText(row_) : QString();
    }

    QRect rect() const override {
        const QRect card = board_->CardRect(row_);
        return card.translated(board_->viewport()->mapToGlobal(QPoint()));
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.selectable = state.focusable = true;
        const bool focus = isValid() && board_->FocusNote() == board_->Model().IDAt(row_);
        state.selected = focus;
        state.focused = focus && board_->hasFocus();
        const auto [first, end] = board_->VisibleRows();
        state.offscreen = row_ < first || row_ >= end;
        return state;
    }

protected:
    void Open() override {
        const int32_t note = board_->Model().IDAt(row_);
        QTimer::singleShot(0, board_, [board = board_, note] { emit board->EditRequested(note); });
    }

private:
    BoardView* board_;
    int row_;
};

/// What stands on an empty board: the board's only child, past the viewport between them.
class AccessibleEmptyPane : public QAccessibleWidget {
public:
    explicit AccessibleEmptyPane(BoardEmptyPane& pane) : QAccessibleWidget(&pane, QAccessible::Grouping), pane_(pane) {}

    QAccessibleInterface* parent() const override {
        const QAccessibleInterface* const viewport = QAccessibleWidget::parent();
        return viewport ? viewport->parent() : nullptr;
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? pane_.State().title : QAccessibleWidget::text(kind);
    }

private:
    BoardEmptyPane& pane_;
};

class AccessibleBoard : public QAccessibleWidget {
public:
    explicit AccessibleBoard(BoardView& board) : QAccessibleWidget(&board, QAccessible::List), board_(board) {}

    int childCount() const override { return IsEmpty() ? 1 : board_.Model().Count(); }

    QAccessibleInterface* child(int row) const override {
        if (row < 0 || row >= childCount())
            return nullptr;
        if (IsEmpty())
            return QAccessible::queryAccessibleInterface(Pane());
        return cards_.At(row, [this, row] { return new AccessibleCard(board_, row); });
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        if (IsEmpty())
            return child && child->object() == Pane() ? 0 : -1;
        return cards_.NumberOf(child);
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint point = board_.viewport()->mapFromGlobal(QPoint(x, y));
        const auto [first, end] = board_.VisibleRows();
        for (int row = first; row < end; ++row)
            if (board_.CardRect(row).contains(point))
                return child(row);
        return IsEmpty() && board_.viewport()->rect().contains(point) ? child(0) : nullptr;
    }

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Description || !IsEmpty())
            return QAccessibleWidget::text(kind);
        QStringList lines{Pane()->State().title, Pane()->State().text};
        lines.removeAll(QString());
        return lines.join(QLatin1Char('\n'));
    }

    QAccessibleInterface* focusChild() const override { return child(board_.Model().RowOf(board_.FocusNote())); }

private:
    bool IsEmpty() const { return board_.Model().Count() == 0; }
    BoardEmptyPane* Pane() const {
        return board_.viewport()->findChild<BoardEmptyPane*>(QString(), Qt::FindDirectChildrenOnly);
    }

    BoardView& board_;
    mutable AccessibleItems cards_;  // by row
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    if (auto* const pane = qobject_cast<BoardEmptyPane*>(object))
        return new AccessibleEmptyPane(*pane);
    auto* const board = qobject_cast<BoardView*>(object);
    return board ? new AccessibleBoard(*board) : nullptr;
}

}  // namespace

void InstallBoardAccessibility() {
    QAccessible::installFactory(MakeAccessible);
}

}  // namespace lore
