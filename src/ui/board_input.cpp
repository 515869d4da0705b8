#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "notes/attachment_kind.h"
#include "ui/board_view.h"
#include "ui/board_view_impl.h"
#include "ui/card_attachments.h"
#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {
namespace {

constexpr int kWheelNotch = 120;

struct PictureEntry {
    CardHit::Part part;
    PictureCommand command;
    const char* text;
};
constexpr std::array<PictureEntry, 5> kPictureEntries = {{
    {CardHit::ZoomIn, PictureCommand::ZoomIn, QT_TRANSLATE_NOOP("lore::BoardView", "Zoom In")},
    {CardHit::ZoomOut, PictureCommand::ZoomOut, QT_TRANSLATE_NOOP("lore::BoardView", "Zoom Out")},
    {CardHit::ShiftLeft, PictureCommand::ShiftLeft, QT_TRANSLATE_NOOP("lore::BoardView", "Shift Left")},
    {CardHit::ShiftRight, PictureCommand::ShiftRight, QT_TRANSLATE_NOOP("lore::BoardView", "Shift Right")},
    {CardHit::Restore, PictureCommand::Restore, QT_TRANSLATE_NOOP("lore::BoardView", "Restore")},
}};

const PictureEntry* EntryOf(CardHit::Part part) {
    const auto found = std::find_if(kPictureEntries.begin(), kPictureEntries.end(),
                                    [part](const PictureEntry& entry) { return entry.part == part; });
    return found == kPictureEntries.end() ? nullptr : &*found;
}

}  // namespace

void BoardView::Impl::ChangeFocus(int row, bool reveal) {
    const int32_t id = row < 0 ? -1 : model.NoteAt(row).id;
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
    if (row >= 0 && QAccessible::isActive()) {
        QAccessibleEvent focus(&view, QAccessible::Focus);
        focus.setChild(row);
        QAccessible::updateAccessibility(&focus);
    }
    emit view.SelectionChanged(id);
}

void BoardView::Impl::Reveal(int row) {
    const int height = view.viewport()->height();
    const int top = TopOf(row);
    const int cardHeight = HeightOf(row);
    if (top < 0 || cardHeight >= height)
        AnchorAt(row, 0);
    else if (top + cardHeight > height)
        AnchorAt(row, height - cardHeight);
    else
        return;
    Settle();
    view.viewport()->update();
}

// A card that goes on beyond the edge is scrolled through before the next one gets the focus.
void BoardView::Impl::MoveFocus(int step) {
    if (focusRow < topRow || focusRow >= endRow)
        return ChangeFocus(model.Count() == 0 ? -1 : topRow, true);
    const QRect card = view.CardRect(focusRow);
    const int over = step > 0 ? card.bottom() + 1 - view.viewport()->height() : -card.top();
    QScrollBar& bar = *view.verticalScrollBar();
    if (over > 0)
        return bar.setValue(bar.value() + step * std::min(over, bar.singleStep()));
    ChangeFocus(std::clamp(focusRow + step, 0, model.Count() - 1), true);
}

void BoardView::Impl::Page(int direction) {
    QScrollBar& bar = *view.verticalScrollBar();
    bar.setValue(bar.value() + direction * bar.pageStep());
    if (model.Count() == 0)
        return;
    const bool atEnd = direction > 0 ? bar.value() == bar.maximum() : bar.value() == 0;
    const int top = topRow + (topOffset < 0 && topRow + 1 < endRow ? 1 : 0);
    ChangeFocus(atEnd ? (direction > 0 ? model.Count() - 1 : 0) : top, false);
}

void BoardView::keyPressEvent(QKeyEvent* event) {
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
            if (impl_->drag.running)
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
    verticalScrollBar()->setValue(verticalScrollBar()->value() - delta);
    impl_->Hover(event->position().toPoint());
    event->accept();
}

void BoardView::Impl::Hover(const QPoint& point) {
    const bool beside = point.x() < CardLeft() || point.x() >= CardLeft() + store.Width();
    const int row = beside || !view.viewport()->rect().contains(point) ? -1 : RowAt(point.y());
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

PictureRoom BoardView::Impl::RoomOf(int row, int attachment) {
    const auto& picture = model.NoteAt(row).attachments[static_cast<size_t>(attachment)];
    const int widest = Card::PictureWidth(store.Width());
    const QString path = PathToQString(model.AttachmentPath(picture));
    return {std::min(widest, store.Pictures().NaturalSize(path).width()), widest};
}

void BoardView::Impl::Activate(int row, const CardHit& hit) {
    const int32_t id = model.NoteAt(row).id;
    if (const PictureEntry* entry = EntryOf(hit.part))
        emit view.PictureCommandRequested(id, hit.attachment, entry->command, RoomOf(row, hit.attachment));
    else if (hit.part == CardHit::Remove)
        emit view.RemoveRequested(id);
    else if (hit.part == CardHit::Open || hit.part == CardHit::WebLink)
        emit view.OpenRequested(id, hit.attachment);
    else if (hit.part == CardHit::TextLink)
        emit view.LinkRequested(hit.text);
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
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
    if (impl_->drag.running)
        return impl_->Drop();
    const int row = std::exchange(impl_->drag.pressedRow, -1);
    const CardHit pressed = std::exchange(impl_->drag.pressedHit, CardHit());
    const CardHit hit = impl_->HitTest(event->pos(), impl_->RowAt(event->pos().y()));
    if (row >= 0 && row == impl_->RowAt(event->pos().y()) && hit.part == pressed.part &&
        hit.attachment == pressed.attachment)
        impl_->Activate(row, hit);
}

void BoardView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const int row = impl_->RowAt(event->pos().y());
    const CardHit hit = impl_->HitTest(event->pos(), row);
    if (EntryOf(hit.part))
        impl_->Press(event->pos());
    else if (row >= 0 && (hit.part == CardHit::None || hit.part == CardHit::Picture))
        emit EditRequested(impl_->model.NoteAt(row).id);
}

void BoardView::Impl::AddAttachmentEntries(QMenu& menu, int row, int attachment) {
    const CNote& note = model.NoteAt(row);
    const CAttachment& shown = note.attachments[static_cast<size_t>(attachment)];
    const int32_t id = note.id;
    const auto add = [&](const QString& text, auto action) {
        QObject::connect(menu.addAction(text), &QAction::triggered, &view, action);
    };
    if (shown.type == kWebLink)
        return add(tr("Open Link"), [this, id, attachment] { emit view.OpenRequested(id, attachment); });
    if (IsShownPicture(shown)) {
        for (const PictureEntry& entry : kPictureEntries)
            add(tr(entry.text), [this, id, attachment, command = entry.command, room = RoomOf(row, attachment)] {
                emit view.PictureCommandRequested(id, attachment, command, room);
            });
        menu.addSeparator();
    } else {
        add(tr("Open Attachment"), [this, id, attachment] { emit view.OpenRequested(id, attachment); });
    }
    add(tr("Extract Attachment"), [this, id, attachment] { emit view.ExtractRequested(id, attachment); });
}

void BoardView::Impl::FillMenu(QMenu& menu, int row, const CardHit& hit, bool byKeyboard) {
    const CNote& note = model.NoteAt(row);
    if (hit.attachment >= 0)
        return AddAttachmentEntries(menu, row, hit.attachment);
    const int32_t id = note.id;
    QObject::connect(menu.addAction(tr("Remove From Current List")), &QAction::triggered, &view,
                     [this, id] { emit view.RemoveRequested(id); });
    // The keyboard can't point at an attachment.
    for (size_t i = 0; byKeyboard && i < note.attachments.size(); ++i)
        AddAttachmentEntries(*menu.addMenu(ToQString(note.attachments[i].title).simplified()), row,
                             static_cast<int>(i));
}

void BoardView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const int row = byKeyboard ? impl_->focusRow : impl_->RowAt(event->pos().y());
    if (row < 0)
        return;
    impl_->ChangeFocus(row, byKeyboard);
    const CardHit hit = byKeyboard ? CardHit() : impl_->HitTest(event->pos(), row);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    impl_->FillMenu(*menu, row, hit, byKeyboard);
    const QRect card = CardRect(row).intersected(viewport()->rect());
    menu->popup(byKeyboard ? viewport()->mapToGlobal(card.topLeft() + QPoint(6 * kSpace, 6 * kSpace))
                           : event->globalPos());
}

bool BoardView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave)
        impl_->Hover(QPoint(-1, -1));
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int row = impl_->RowAt(help->pos().y());
    QToolTip::showText(help->globalPos(), impl_->HitTest(help->pos(), row).text, viewport());
    return true;
}

void BoardView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    impl_->UpdateRow(impl_->focusRow);
}

void BoardView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    impl_->UpdateRow(impl_->focusRow);
}

}  // namespace lore
