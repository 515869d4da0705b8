#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>

#include "ui/board_view.h"
#include "ui/board_view_impl.h"

namespace lore {
namespace {

constexpr int kDragDistance = 30;    // pixels that the mouse moves before a card comes along
constexpr int kEdge = 2;             // pixels from the upper or lower edge at which the list scrolls
constexpr int kScrollInterval = 50;  // milliseconds
constexpr int kScrollStep = 35;
constexpr QMargins kDragBounds(2, 2, 2, 5);  // what the mouse keeps from the edges of the board

}  // namespace

void BoardView::Impl::Press(const QPoint& point) {
    view.setFocus(Qt::MouseFocusReason);
    const int row = RowAt(point.y());
    drag.pressedRow = row;
    drag.pressedAt = point;
    drag.pressedHit = HitTest(point, row);
    if (row >= 0)
        ChangeFocus(row, false);
}

void BoardView::Impl::DragTo(QPoint point) {
    if (drag.pressedRow < 0 || model.Count() < 2)
        return;
    if (!drag.running) {
        const QPoint moved = point - drag.pressedAt;
        if (moved.x() * moved.x() + moved.y() * moved.y() < kDragDistance * kDragDistance)
            return;
        drag.running = true;
        view.viewport()->setCursor(Qt::ClosedHandCursor);
    }
    const QRect bounds = view.viewport()->rect().marginsRemoved(kDragBounds);
    point.setX(std::clamp(point.x(), bounds.left(), bounds.right()));
    point.setY(std::clamp(point.y(), bounds.top(), bounds.bottom()));
    drag.mouse = point;
    drag.scrollStep = 0;
    if (point.y() <= bounds.top() + kEdge)
        drag.scrollStep = -kScrollStep;
    else if (point.y() >= bounds.bottom() - kEdge)
        drag.scrollStep = kScrollStep;
    if (drag.scrollStep == 0)
        drag.timer.stop();
    else if (!drag.timer.isActive())
        drag.timer.start(kScrollInterval, &view);
    FindTarget();
}

void BoardView::Impl::FindTarget() {
    drag.targetRow = RowAt(drag.mouse.y());
    view.viewport()->update();
}

void BoardView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != impl_->drag.timer.timerId())
        return QAbstractScrollArea::timerEvent(event);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + impl_->drag.scrollStep);
    impl_->FindTarget();
}

void BoardView::Impl::Drop() {
    const int from = drag.pressedRow, to = drag.targetRow;
    CancelDrag();
    if (from >= 0 && to >= 0 && from != to)
        emit view.MoveRequested(model.NoteAt(from).id, model.NoteAt(to).id);
}

void BoardView::Impl::CancelDrag() {
    drag.timer.stop();
    const bool wasRunning = drag.running;
    drag = BoardDrag();
    if (!wasRunning)
        return;
    view.viewport()->setCursor(Qt::ArrowCursor);
    view.viewport()->update();
}

}  // namespace lore
