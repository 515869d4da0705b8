#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "base/long_list.h"
#include "notes/note.h"
#include "notes/note_book_loader.h"
#include "notes/open_notebook.h"
#include "notes/text_cache.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// What an import has put in the place of what, so that it can be undone.
struct ImportChanges {
    std::vector<CNote> replaced;                 ///< as their files held them
    std::vector<CSource> sources;                ///< those of the replaced notes
    std::unordered_map<int32_t, size_t> landed;  ///< FingerprintOf the notes that came in, by id
    std::vector<CNote> withoutFiles = {};        ///< those that are back, but lack an attachment file still
    bool IsEmpty() const { return landed.empty() && withoutFiles.empty(); }
};

/// True for more than a fifth of the notes of a NoteBook: what takes so many away asks first, with their number.
constexpr bool IsLargeShare(size_t notes, size_t all) {
    return notes > all / 5;
}

/// How many notes undoing an import would take out of the NoteBook.
size_t NotesThatLeave(const ImportChanges& changes, const OpenNoteBook& book);

/// Tells whether a note is still as it was.
size_t FingerprintOf(const CNote& note);

/// Undoes an import: takes the notes out that came in, and puts those back that they replaced, with their files. Notes
/// that were changed since, or deleted, stay as they are, and so do sources and categories that came along. What can't
/// be written, told, is left in `changes`, so that it can be tried again; a note that could not be read is, too, until
/// a load leaves it out of the index: from then on it counts as deleted. Gives the ids of those that were changed;
/// nothing, told, if what the replaced notes name can't be brought back: then all is as it was. `counters` are raised
/// by what is given out, `store` is called after that. `texts` may be null.
std::optional<LongList> UndoImport(ImportChanges& changes, OpenNoteBook& book, IdCounters& counters,
                                   const std::function<void()>& store, const ReadContext& context, FaultNotice& faults,
                                   TextCache* texts);

}  // namespace lore
