#include <QTimerEvent>

#include "ui/board/board_view.h"
#include "ui/board/board_view_impl.h"
#include "ui/look/focus_child.h"

namespace lore {

void BoardView::Impl::Press(const QPoint& point) {
    view.setFocus(Qt::MouseFocusReason);
    const int row = RowAt(point);
    drag.Press(row, {point.x(), point.y()});
    pressedHit = HitTest(point, row);
    if (row >= 0)
        ChangeFocus(row, false);
}

void BoardView::Impl::DragTo(const QPoint& point) {
    const bool wasRunning = drag.IsRunning();
    const QSize size = view.viewport()->size();
    if (!drag.Move({point.x(), point.y()}, size.width(), size.height(), model.Count()))
        return;
    if (!wasRunning)
        view.viewport()->setCursor(Qt::ClosedHandCursor);
    if (drag.ScrollStep() == 0)
        dragTimer.stop();
    else if (!dragTimer.isActive())
        dragTimer.start(kDragScrollInterval, &view);
    FindTarget();
}

void BoardView::Impl::FindTarget() {
    drag.SetTarget(RowAt({drag.Mouse().x, drag.Mouse().y}));
    view.viewport()->update();
}

void BoardView::timerEvent(QTimerEvent* event) {
    // A key never waits for a screen that is painted and the layout of a card behind it: that has a turn of its own.
    if (impl_->putOff > 0 && event->timerId() != impl_->dragTimer.timerId()) {
        --impl_->putOff;
        return;
    }
    if (event->timerId() == impl_->showTimer.timerId() && impl_->IsShowing())
        return impl_->ShowStep();
    impl_->CatchUp();
    if (event->timerId() == impl_->aheadTimer.timerId()) {
        if (!impl_->LayOutAhead())
            impl_->aheadTimer.stop();
        return;
    }
    if (event->timerId() == impl_->savedTimer.timerId()) {
        impl_->ShowSaved();
        return;
    }
    if (event->timerId() != impl_->dragTimer.timerId())
        return QAbstractScrollArea::timerEvent(event);
    impl_->ScrollBy(impl_->drag.ScrollStep());
    impl_->FindTarget();
}

void BoardView::Impl::Drop() {
    const BoardDrag dropped = drag;
    CancelDrag();
    if (dropped.MovesNote())
        emit view.MoveRequested(model.IDAt(dropped.Row()), model.IDAt(dropped.Target()));
}

void BoardView::MoveFocusNote(int step) {
    impl_->CatchUp();
    const int row = impl_->focusRow, target = row + step;
    if (row < 0 || target < 0 || target >= impl_->model.Count())
        return;
    impl_->CancelDrag();
    emit MoveRequested(impl_->model.IDAt(row), impl_->model.IDAt(target));
    if (impl_->focusRow < 0)
        return;
    impl_->Reveal(impl_->focusRow);
    if (hasFocus())
        TellFocusChild(*this, impl_->focusRow);
}

void BoardView::Impl::CancelDrag() {
    dragTimer.stop();
    const bool wasRunning = drag.IsRunning();
    drag.Cancel();
    if (!wasRunning)
        return;
    view.viewport()->setCursor(Qt::ArrowCursor);
    view.viewport()->update();
}

}  // namespace lore
