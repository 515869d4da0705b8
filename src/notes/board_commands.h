#pragma once

#include <string_view>
#include <vector>

#include "notes/note.h"

namespace lore {

/// What the context menu of a card offers.
enum class BoardCommand {
    ZoomIn,
    ZoomOut,
    ShiftLeft,
    ShiftRight,
    Restore,
    OpenAttachment,
    OpenLink,
    ExtractAttachment,
    EditNote,
    RemoveFromList,
    CopyToNoteBook,
    DeleteNote,
};

/// The words of an entry; those of CopyToNoteBook stand over a menu of the other NoteBooks.
std::string_view BoardCommandText(BoardCommand command);
/// True for the five that change how a picture is drawn.
bool IsPictureChange(BoardCommand command);

/// The entries for an attachment of a card, in order.
std::vector<BoardCommand> AttachmentCommands(const CAttachment& attachment);
/// The entries for a card outside its attachments, in order. Without another NoteBook there is nowhere to copy to.
std::vector<BoardCommand> NoteCommands(bool hasOtherNoteBooks);

}  // namespace lore
