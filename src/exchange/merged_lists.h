#pragma once

#include "classify/category_merge.h"
#include "exchange/source_merge.h"
#include "notes/note.h"
#include "notes/open_notebook.h"
#include "ports/fault_notice.h"

namespace lore {

/// Brings the three paths of a note from elsewhere into a forest, by their names, and gives them the ids of the forest.
/// A path without a name, or of the unassigned notes, becomes empty: its id alone would mean another category here.
void MapCategories(CNote& note, CategoryMerger& merger);

/// Writes those lists of a NoteBook that a merge has added to: authors, types, sources, and the categories where
/// `newCategories` says so. A list that could not be read whole is kept beside before it is written anew. Stops at the
/// first list that can't be written, or before the first where the merge ran out of ids, tells it and gives false: what
/// names its entries must not be stored then.
bool WriteMergedLists(OpenNoteBook& book, const SourceMerge& merge, bool newCategories, FaultNotice& faults);

}  // namespace lore
