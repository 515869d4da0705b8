#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

#include "base/long_list.h"
#include "notes/note.h"
#include "notes/note_index.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// The notes with these ids in the order given, each id once; an id that the index doesn't hold is left out. Each file
/// is read once; one that is missing, lacks some of the notes, or was damaged since the load, is told. Once `stop` is
/// requested, notes may be missing.
std::vector<CNote> FindNotes(const NoteIndex& index, const LongList& ids, const ReadContext& context,
                             FaultNotice& faults, const std::stop_token& stop = {});

/// One note; nothing if the index doesn't hold it or its file doesn't give it.
std::optional<CNote> FindNote(const NoteIndex& index, int32_t id, const ReadContext& context, FaultNotice& faults);

/// How many notes the note files of a folder hold; a note that stands twice counts once.
size_t CountNotes(const std::filesystem::path& notesFolder, const ReadContext& context, FaultNotice& faults);

}  // namespace lore
