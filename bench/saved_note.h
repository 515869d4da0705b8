#pragma once

#include <optional>
#include <string>

#include "app/writing_commands.h"

namespace lore {

/// Gives a note another text and saves it as the editor does. The saved note, or nothing if that fails.
inline std::optional<CNote> SaveAnew(WritingCommands& writing, int32_t id, int turn) {
    std::optional<EditNoteSession> session = writing.EditNote(id);
    FixedNoteText text("{\\rtf1\\ansi The keeper wrote for the " + std::to_string(turn) + ". time.\\par}");
    if (!session || session->SaveNote(text) != SaveOutcome::Saved)
        return std::nullopt;
    return session->note;
}

inline int32_t MiddleNote(const OpenNoteBook& book) {
    const LongList ids = book.index.AllIDs();
    return ids[ids.Count() / 2];
}

}  // namespace lore
