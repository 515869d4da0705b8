#pragma once

#include <functional>
#include <string_view>

#include "notes/open_notebook.h"
#include "ports/fault_notice.h"

namespace lore {

/// Changes the record of a note that a linked NoteBook syncs, marks it as changed, and keeps it in the log. False, and
/// nothing changes, if the NoteBook isn't linked or the log has no such record with the note in sync. The caller writes
/// the log.
bool StampSyncRecord(SyncLog& log, std::string_view guid, const std::function<void(CSyncInfo&)>& change);

/// Writes the log of the open NoteBook. One that could not be read whole is kept beside before, as "Sync.dat.kept", and
/// told. A failure is told.
bool WriteSyncLog(OpenNoteBook& book, FaultNotice& faults);

}  // namespace lore
