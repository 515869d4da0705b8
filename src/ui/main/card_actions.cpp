#include "ui/main/card_actions.h"

#include "app/lorebinder_app.h"
#include "app/open_rules.h"
#include "app/picture_commands.h"
#include "edit/attachment_list.h"
#include "notes/list_board_model.h"
#include "ui/board/board_view.h"
#include "ui/note_editor/attachment_open.h"

namespace lore {

CardActions::CardActions(CLorebinderApp& app, const ListBoardModel& model, BoardView& board, Theme& theme,
                         QWidget& window)
    : QObject(&window), app_(app), model_(model), theme_(theme), window_(window) {
    connect(&board, &BoardView::PictureCommandRequested, this,
            [this, &board](int32_t note, int attachment, PictureCommand command, const PictureRoom& room) {
                RunPictureCommand(app_, note, static_cast<size_t>(attachment), command, room);
                board.RefreshNote(note);
            });
    connect(&board, &BoardView::OpenRequested, this, &CardActions::Open);
    connect(&board, &BoardView::ExtractRequested, this, &CardActions::Extract);
    connect(&board, &BoardView::LinkRequested, this,
            [this](const QString& address) { OpenWebLink(address, app_.Ports().prompts); });
}

const CAttachment* CardActions::Attachment(int32_t noteId, int attachment) const {
    const int row = model_.RowOf(noteId);
    return row < 0 ? nullptr : &model_.NoteAt(row).attachments[static_cast<size_t>(attachment)];
}

void CardActions::Open(int32_t noteId, int attachment) {
    if (const CAttachment* const chosen = Attachment(noteId, attachment))
        OpenAttachmentFile(*chosen, model_.AttachmentPath(*chosen), app_.Ports().prompts, theme_, &window_);
}

void CardActions::Extract(int32_t noteId, int attachment) {
    const AppPorts& ports = app_.Ports();
    if (const CAttachment* const chosen = Attachment(noteId, attachment))
        ExtractAttachmentFile(*chosen, app_.NoteBook().paths.Attachments(), ports.prompts, ports.progress,
                              ports.faults);
}

}  // namespace lore
