#include <QContextMenuEvent>
#include <QMenu>
#include <algorithm>

#include "notes/board_layout.h"
#include "ui/board/board_view.h"
#include "ui/board/board_view_impl.h"
#include "ui/controls/popup_menu.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

// In the order of the entries.
constexpr PictureCommand kPictureChanges[] = {PictureCommand::ZoomIn, PictureCommand::ZoomOut,
                                              PictureCommand::ShiftLeft, PictureCommand::ShiftRight,
                                              PictureCommand::Restore};

/// The keys that carry a command out on the board; empty for one without.
QKeySequence KeysOf(BoardCommand command) {
    return command == BoardCommand::EditNote     ? QKeySequence(Qt::Key_F2)
           : command == BoardCommand::DeleteNote ? QKeySequence(QKeySequence::Delete)
                                                 : QKeySequence();
}

/// A name as the words of an entry: an ampersand in it marks no letter.
QString AsMenuText(QString name) {
    return name.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}  // namespace

PictureRoom BoardView::Impl::RoomOf(int row, int attachment) {
    const auto& picture = model.NoteAt(row).attachments[static_cast<size_t>(attachment)];
    const int widest = CardAttachmentWidth(store.Width());
    const QString path = PathToQString(model.AttachmentPath(picture));
    return {std::min(widest, store.Pictures().NaturalSize(path).width()), widest};
}

void BoardView::Impl::Run(BoardCommand command, int32_t id, int attachment) {
    const int row = model.RowOf(id);
    if (row < 0)
        return;
    if (IsPictureChange(command))
        emit view.PictureCommandRequested(id, attachment, kPictureChanges[static_cast<size_t>(command)],
                                          RoomOf(row, attachment));
    else if (command == BoardCommand::OpenAttachment || command == BoardCommand::OpenLink)
        emit view.OpenRequested(id, attachment);
    else if (command == BoardCommand::ExtractAttachment)
        emit view.ExtractRequested(id, attachment);
    else if (command == BoardCommand::EditNote)
        emit view.EditRequested(id);
    else if (command == BoardCommand::RemoveFromList)
        emit view.RemoveRequested(id);
    else if (command == BoardCommand::DeleteNote)
        emit view.DeleteRequested(id);
}

void BoardView::Impl::AddEntry(QMenu& menu, BoardCommand command, int32_t id, int attachment) {
    const std::string_view words = BoardCommandText(command);
    const QString text = QString::fromLatin1(words.data(), static_cast<qsizetype>(words.size()));
    if (command != BoardCommand::CopyToNoteBook) {
        QAction* const entry = menu.addAction(text);
        // For the eye: the entries of the menu bar take the keys.
        entry->setShortcut(KeysOf(command));
        entry->setShortcutContext(Qt::WidgetShortcut);
        entry->setShortcutVisibleInContextMenu(true);
        QObject::connect(entry, &QAction::triggered, &view,
                         [this, command, id, attachment] { Run(command, id, attachment); });
        return;
    }
    QMenu& others = *menu.addMenu(text);
    for (qsizetype i = 0; i < otherNoteBooks.size(); ++i)
        QObject::connect(others.addAction(AsMenuText(otherNoteBooks[i])), &QAction::triggered, &view,
                         [this, id, i] { emit view.CopyRequested(id, static_cast<int>(i)); });
}

void BoardView::Impl::AddAttachmentEntries(QMenu& menu, int row, int attachment) {
    const CNote& note = model.NoteAt(row);
    for (const BoardCommand command : AttachmentCommands(note.attachments[static_cast<size_t>(attachment)])) {
        if (command == BoardCommand::ExtractAttachment && menu.actions().size() > 1)
            menu.addSeparator();
        AddEntry(menu, command, note.id, attachment);
    }
}

void BoardView::Impl::FillMenu(QMenu& menu, int row, const CardHit& hit, bool byKeyboard) {
    const CNote& note = model.NoteAt(row);
    if (hit.attachment >= 0)
        return AddAttachmentEntries(menu, row, hit.attachment);
    for (const BoardCommand command : NoteCommands(!otherNoteBooks.isEmpty()))
        if (noteCommands.contains(command))
            AddEntry(menu, command, note.id, -1);
    // The keyboard can't point at an attachment.
    for (size_t i = 0; byKeyboard && i < note.attachments.size(); ++i)
        AddAttachmentEntries(*menu.addMenu(AsMenuText(ToQString(note.attachments[i].title).simplified())), row,
                             static_cast<int>(i));
}

void BoardView::contextMenuEvent(QContextMenuEvent* event) {
    impl_->CatchUp();
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    // Without a card that has the focus the keys mean the first one in sight, as the arrow keys do.
    const int first = impl_->focusRow < 0 && impl_->model.Count() > 0 ? impl_->topRow : impl_->focusRow;
    const int row = byKeyboard ? first : impl_->RowAt(event->pos());
    if (row < 0)
        return;
    impl_->ChangeFocus(row, byKeyboard);
    const CardHit hit = byKeyboard ? CardHit() : impl_->HitTest(event->pos(), row);
    QMenu* const menu = NewPopupMenu(this);
    impl_->FillMenu(*menu, row, hit, byKeyboard);
    const QRect card = CardRect(row).intersected(viewport()->rect());
    menu->popup(byKeyboard ? viewport()->mapToGlobal(card.topLeft() + QPoint(6 * kSpace, 6 * kSpace))
                           : event->globalPos());
}

}  // namespace lore
