#pragma once

#include <string>
#include <vector>

#include "notes/note_book_loader.h"
#include "notes/open_notebook.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// One thing that was mended.
struct Repair {
    std::string file;  ///< full path
    std::string text;  ///< one line for a reader, without the file
};

/// Mends in the NoteBook whose paths `book` holds what can be mended without losing anything, and loads it on the way:
/// note files that break off are written anew with the notes that can be read, notes that stand twice are left where
/// they belong, notes hidden by another one of their number get a number of their own, notes in a wrong file move, a
/// damaged list of categories is written anew, and categories that notes name by a path are made again. Each file that
/// is written anew is kept beside it as "NAME.kept". The caller stores the counters.
std::vector<Repair> RepairNoteBook(OpenNoteBook& book, IdCounters& counters, const ReadContext& context,
                                   FaultNotice& faults);

}  // namespace lore
