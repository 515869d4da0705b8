#pragma once

#include "notes/open_notebook.h"
#include "ports/fault_notice.h"

namespace lore {

// Each writes one list of the open NoteBook to its file. A list that could not be read whole, or sources whose authors
// could not or are missing, are kept beside before they are written anew for the first time, and that is told. A
// failure is told, and gives false: the file is as it was then.

/// Where the file of the authors is missing though sources name some, the sources are kept and written first.
bool WriteAuthors(OpenNoteBook& book, FaultNotice& faults);
bool WriteSourceTypes(OpenNoteBook& book, FaultNotice& faults);
/// Formats the sources, which drops the ids of deleted authors.
bool WriteSources(OpenNoteBook& book, FaultNotice& faults);
/// `forest` is that of the NoteBook, or one that is to take its place.
bool WriteCategories(OpenNoteBook& book, const CProCategoryList& forest, FaultNotice& faults);

}  // namespace lore
