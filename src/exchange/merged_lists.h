#pragma once

#include "exchange/source_merge.h"
#include "notes/open_notebook.h"
#include "ports/fault_notice.h"

namespace lore {

/// Writes those lists of a NoteBook that a merge has added to: authors, types, sources, and the categories where
/// `newCategories` says so. A list that could not be read whole is kept beside before it is written anew. Stops at the
/// first list that can't be written, or before the first where the merge ran out of ids, tells it and gives false: what
/// names its entries must not be stored then.
bool WriteMergedLists(OpenNoteBook& book, const SourceMerge& merge, bool newCategories, FaultNotice& faults);

}  // namespace lore
