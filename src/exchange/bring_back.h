#pragma once

#include <vector>

#include "notes/note.h"
#include "notes/note_book_loader.h"
#include "notes/open_notebook.h"
#include "ports/fault_notice.h"

namespace lore {

/// Copies of the sources that notes name, with their authors, for the time when the notes come back.
std::vector<CSource> SourcesOfNotes(const std::vector<CNote>& notes, const OpenNoteBook& book);

/// Makes notes that come back after a while name what the NoteBook holds now. A source that has gone is there again,
/// under a new id, for its own may have been given to another one; of categories that were renamed or moved they get
/// the present path, and those that have gone are made again. `sources` is what SourcesOfNotes gave. The lists are
/// written; false, told, if one can't be: then the notes must not be stored. `counters` are raised by what is given
/// out.
bool BringBackWhatNotesName(std::vector<CNote>& notes, const std::vector<CSource>& sources, OpenNoteBook& book,
                            IdCounters& counters, FaultNotice& faults);

}  // namespace lore
