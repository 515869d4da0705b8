#pragma once

#include "base/long_list.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"

namespace lore {

/// Deletes the note files that hold no note: those whose count reads 0 with nothing behind it. A file with a count of 0
/// that holds more is left; the load after this reports it. `progress` may be null.
void CleanNoteFiles(const NoteBookPaths& paths, FaultNotice& faults, Progress* progress);

/// The ids of the note list when the NoteBook was last closed; none if the file is missing.
LongList LoadLastViewList(const NoteBookPaths& paths, FaultNotice& faults);
/// Writes the ids in order, each once.
void SaveLastViewList(const NoteBookPaths& paths, const LongList& ids, FaultNotice& faults);

}  // namespace lore
