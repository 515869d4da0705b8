#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyleHints>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <optional>
#include <utility>

#include "ui/board/board_view.h"
#include "ui/board/board_view_impl.h"
#include "ui/look/focus_child.h"

namespace lore {
namespace {

constexpr int kWheelNotch = 120;

/// What a click on a part of a card does.
std::optional<BoardCommand> CommandOf(CardHit::Part part) {
    static constexpr std::pair<CardHit::Part, BoardCommand> kCommands[] = {
        {CardHit::ZoomIn, BoardCommand::ZoomIn},       {CardHit::ZoomOut, BoardCommand::ZoomOut},
        {CardHit::ShiftLeft, BoardCommand::ShiftLeft}, {CardHit::ShiftRight, BoardCommand::ShiftRight},
        {CardHit::Restore, BoardCommand::Restore},     {CardHit::Open, BoardCommand::OpenAttachment},
        {CardHit::WebLink, BoardCommand::OpenLink},    {CardHit::Edit, BoardCommand::EditNote},
        {CardHit::Delete, BoardCommand::DeleteNote},   {CardHit::Remove, BoardCommand::RemoveFromList}};
    for (const auto& [known, command] : kCommands)
        if (known == part)
            return command;
    return std::nullopt;
}

}  // namespace

void BoardView::Impl::ChangeFocus(int row, bool reveal) {
    const int32_t id = row < 0 ? -1 : model.IDAt(row);
    const bool changed = id != focusNote;
    const int old = focusRow;
    focusRow = row;
    focusNote = id;
    if (changed) {
        store.SetFocusNote(id);
        UpdateRow(old);
        UpdateRow(row);
    }
    if (row >= 0 && reveal)
        Reveal(row);
    if (!changed)
        return;
    if (view.hasFocus())
        TellFocusChild(view, row);
    emit view.SelectionChanged(id);
}

void BoardView::Impl::Reveal(int row) {
    if (!AnchorInSight(row))
        return;
    Settle();
    view.viewport()->update();
}

// False if the card is in sight as it is.
bool BoardView::Impl::AnchorInSight(int row) {
    const int height = view.viewport()->height();
    const int top = TopOf(row);
    const int cardHeight = HeightOf(row);
    if (top < 0 || cardHeight >= height)
        AnchorAt(row, 0);
    else if (top + cardHeight > height)
        AnchorAt(row, height - cardHeight);
    else
        return false;
    return true;
}

// A card that goes on beyond the edge is scrolled through before the next one gets the focus.
void BoardView::Impl::MoveFocus(int step) {
    if (focusRow < topRow || focusRow >= endRow)
        return ChangeFocus(model.Count() == 0 ? -1 : topRow, true);
    const QRect card = view.CardRect(focusRow);
    const int over = step > 0 ? card.bottom() + 1 - view.viewport()->height() : -card.top();
    if (over > 0)
        return ScrollBy(int64_t{step} * std::min(over, view.verticalScrollBar()->singleStep()));
    ChangeFocus(std::clamp(focusRow + step, 0, model.Count() - 1), true);
}

// With the keys the place shows: the card of before, or the first one in sight.
void BoardView::Impl::ShowFocus() {
    CatchUp();
    if (model.Count() == 0)
        return;
    const bool inSight = focusRow >= topRow && focusRow < endRow;
    ChangeFocus(focusRow < 0 ? topRow : focusRow, !inSight);
}

void BoardView::Impl::Page(int direction) {
    ScrollBy(int64_t{direction} * view.verticalScrollBar()->pageStep());
    if (model.Count() == 0)
        return;
    const int top = topRow + (topOffset < 0 && topRow + 1 < endRow ? 1 : 0);
    ChangeFocus(IsAtEnd(direction) ? (direction > 0 ? model.Count() - 1 : 0) : top, false);
}

void BoardView::keyPressEvent(QKeyEvent* event) {
    impl_->CatchUp();
    const int last = impl_->model.Count() - 1;
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
        case Qt::Key_Down:
            return impl_->MoveFocus(1);
        case Qt::Key_Up:
            return impl_->MoveFocus(-1);
        case Qt::Key_Home:
            return impl_->ChangeFocus(last < 0 ? -1 : 0, true);
        case Qt::Key_End:
            return impl_->ChangeFocus(last, true);
        case Qt::Key_PageDown:
            return impl_->Page(1);
        case Qt::Key_PageUp:
            return impl_->Page(-1);
        case Qt::Key_Escape:
            if (impl_->drag.IsRunning())
                return impl_->CancelDrag();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (impl_->focusNote > 0)
                emit EditRequested(impl_->focusNote);
            return;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
        case Qt::Key_Minus:
            if (control) {
                emit ZoomStepRequested(event->key() == Qt::Key_Minus ? -1 : 1);
                return;
            }
            break;
        default:
            break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

void BoardView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        impl_->wheelRest += event->angleDelta().y();
        for (; impl_->wheelRest >= kWheelNotch; impl_->wheelRest -= kWheelNotch)
            emit ZoomStepRequested(1);
        for (; impl_->wheelRest <= -kWheelNotch; impl_->wheelRest += kWheelNotch)
            emit ZoomStepRequested(-1);
        return event->accept();
    }
    const int delta = event->pixelDelta().y() != 0 ? event->pixelDelta().y() : event->angleDelta().y();
    impl_->ScrollBy(-delta);
    impl_->Hover(event->position().toPoint());
    event->accept();
}

void BoardView::Impl::Hover(const QPoint& point) {
    const int row = RowAt(point);
    const CardHit hit = HitTest(point, row);
    if (row != hoverRow || hit.part != hot.part || hit.attachment != hot.attachment) {
        UpdateRow(hoverRow);
        UpdateRow(row);
    }
    hoverRow = row;
    hot = hit;
    const bool hand = hit.part != CardHit::None && hit.part != CardHit::Picture;
    view.viewport()->setCursor(hand ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void BoardView::Impl::Activate(int row, const CardHit& hit) {
    if (const auto command = CommandOf(hit.part))
        Run(*command, model.IDAt(row), hit.attachment);
    else if (hit.part == CardHit::TextLink)
        emit view.LinkRequested(hit.text);
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    impl_->pressedAt = event->timestamp();
    impl_->Press(event->pos());
}

void BoardView::mouseMoveEvent(QMouseEvent* event) {
    // The board takes the keyboard from whatever isn't being typed into.
    QWidget* focus = QApplication::focusWidget();
    if (!hasFocus() && isActiveWindow() && !qobject_cast<QLineEdit*>(focus))
        setFocus(Qt::MouseFocusReason);
    if (event->buttons().testFlag(Qt::LeftButton))
        impl_->DragTo(event->pos());
    else
        impl_->Hover(event->pos());
}

void BoardView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (impl_->drag.IsRunning())
        return impl_->Drop();
    const int row = impl_->drag.Row();
    const CardHit pressed = std::exchange(impl_->pressedHit, CardHit());
    impl_->drag.Cancel();
    const int released = impl_->RowAt(event->pos());
    const CardHit hit = impl_->HitTest(event->pos(), released);
    if (row >= 0 && row == released && hit.part == pressed.part && hit.attachment == pressed.attachment)
        impl_->Activate(row, hit);
}

void BoardView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    // The first click may have been on a button of a dialog that went with it.
    const std::optional<quint64> first = std::exchange(impl_->pressedAt, std::nullopt);
    const auto longest = static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    if (!first || event->timestamp() - *first > longest)
        return;
    const int row = impl_->RowAt(event->pos());
    const CardHit hit = impl_->HitTest(event->pos(), row);
    const auto command = CommandOf(hit.part);
    if (command && IsPictureChange(*command))
        impl_->Press(event->pos());
    else if (row >= 0 && (hit.part == CardHit::None || hit.part == CardHit::Picture))
        emit EditRequested(impl_->model.IDAt(row));
}

bool BoardView::viewportEvent(QEvent* event) {
    // What uncovers a part of the board doesn't wait for its cards either.
    const bool isSoon = impl_ && event->type() == QEvent::Paint && impl_->IsShowing();
    if (impl_ && !isSoon)
        impl_->CatchUp();
    if (event->type() == QEvent::Leave)
        impl_->Hover(QPoint(-1, -1));
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int row = impl_->RowAt(help->pos());
    QToolTip::showText(help->globalPos(), impl_->HitTest(help->pos(), row).text, viewport());
    return true;
}

void BoardView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    impl_->UpdateRow(impl_->focusRow);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
        impl_->ShowFocus();
    TellFocusChildSoon(*this);
}

void BoardView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    impl_->UpdateRow(impl_->focusRow);
}

}  // namespace lore
