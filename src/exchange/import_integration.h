#pragma once

#include "exchange/import_archive.h"
#include "exchange/import_comparison.h"
#include "exchange/import_job.h"

namespace lore {

/// Brings the chosen notes of an import into the NoteBook, as ImportNotes promises. `sync` says whether their records
/// go into the sync log. Gives the ids of the notes that are on the disk now, in order. If one of the lists could not
/// be written, no note is.
LongList IntegrateNotes(ImportComparison& comparison, ImportArchive& archive, bool sync, const ImportJob& job);

}  // namespace lore
