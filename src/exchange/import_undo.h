#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "notes/note.h"
#include "notes/open_notebook.h"
#include "notes/text_cache.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// What an import has put in the place of what, so that it can be undone.
struct ImportChanges {
    std::vector<CNote> replaced;                 ///< as their files held them
    std::unordered_map<int32_t, size_t> landed;  ///< FingerprintOf the notes that came in, by id
};

/// Tells whether a note is still as it was.
size_t FingerprintOf(const CNote& note);

/// Undoes an import: takes the notes out that came in, and puts those back that they replaced, with their files. Notes
/// that were changed since, or deleted, stay as they are, and so do sources and categories that came along. Gives how
/// many were changed. `texts` may be null.
size_t UndoImport(const ImportChanges& changes, OpenNoteBook& book, const ReadContext& context, FaultNotice& faults,
                  TextCache* texts);

}  // namespace lore
