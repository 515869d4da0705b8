#include "notes/board_commands.h"

#include <array>

#include "notes/attachment_kind.h"
#include "notes/board_layout.h"

namespace lore {

namespace {

/// What stands under the mouse, as bits.
enum Place : unsigned { kPicture = 1, kFile = 2, kLink = 4, kCard = 8, kCardWithOthers = 16 };

struct Entry {
    BoardCommand command;
    std::string_view text;
    unsigned places;
};
constexpr std::array<Entry, 12> kEntries = {{
    {BoardCommand::ZoomIn, "Zoom In", kPicture},
    {BoardCommand::ZoomOut, "Zoom Out", kPicture},
    {BoardCommand::ShiftLeft, "Shift Left", kPicture},
    {BoardCommand::ShiftRight, "Shift Right", kPicture},
    {BoardCommand::Restore, "Restore", kPicture},
    {BoardCommand::OpenAttachment, "Open Attachment", kFile},
    {BoardCommand::OpenLink, "Open Link", kLink},
    {BoardCommand::ExtractAttachment, "Extract Attachment", kPicture | kFile},
    {BoardCommand::EditNote, "Edit Note", kCard | kCardWithOthers},
    {BoardCommand::RemoveFromList, "Remove From Current List", kCard | kCardWithOthers},
    {BoardCommand::CopyToNoteBook, "Copy Note To NoteBook", kCardWithOthers},
    {BoardCommand::DeleteNote, "Delete Note Permanently", kCard | kCardWithOthers},
}};

constexpr bool IsInOrder() {
    for (size_t i = 0; i < kEntries.size(); ++i)
        if (kEntries[i].command != static_cast<BoardCommand>(i))
            return false;
    return true;
}
static_assert(IsInOrder());

std::vector<BoardCommand> CommandsAt(Place place) {
    std::vector<BoardCommand> commands;
    for (const Entry& entry : kEntries) {
        if (entry.places & place)
            commands.push_back(entry.command);
    }
    return commands;
}

}  // namespace

std::string_view BoardCommandText(BoardCommand command) {
    return kEntries[static_cast<size_t>(command)].text;
}

bool IsPictureChange(BoardCommand command) {
    return command <= BoardCommand::Restore;
}

std::vector<BoardCommand> AttachmentCommands(const CAttachment& attachment) {
    if (attachment.type == kWebLink)
        return CommandsAt(kLink);
    return CommandsAt(IsShownPicture(attachment) ? kPicture : kFile);
}

std::vector<BoardCommand> NoteCommands(bool hasOtherNoteBooks) {
    return CommandsAt(hasOtherNoteBooks ? kCardWithOthers : kCard);
}

}  // namespace lore
