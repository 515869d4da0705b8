#pragma once

#include <span>
#include <unordered_set>

#include "base/long_list.h"
#include "notes/note.h"
#include "notes/open_notebook.h"

namespace lore {

// Where a note stands in the picture of the open NoteBook, besides the note index: the category forest, the sources,
// the notes without source, the key words and the colours. Nothing here reads or writes a file.

/// Takes notes out of all these lists. `notes` are the notes as they were filed; their texts play no part.
void UnfileNotes(OpenNoteBook& book, std::span<const CNote> notes);
void UnfileNote(OpenNoteBook& book, const CNote& note);

/// Enters notes into all these lists, in their order, and sorts the key words. A path or a source that the NoteBook
/// doesn't know leaves the note out there; a note whose sources are all unknown counts as one without source.
void FileNotes(OpenNoteBook& book, std::span<const CNote> notes);
void FileNote(OpenNoteBook& book, const CNote& note);

/// The values of a list without those of a set, in their order.
LongList WithoutIDs(const LongList& list, const std::unordered_set<int32_t>& ids);

}  // namespace lore
