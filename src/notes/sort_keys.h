#pragma once

#include <cstdint>
#include <span>

#include "notes/note_list_entry.h"
#include "notes/sort_compare.h"
#include "notes/sort_key.h"

namespace lore {

/// The keys of the notes by source or by category, so that they compare as CompareNotes compares the notes with each
/// other and with `limit`. Each text is lower-cased once, each path walked once.
SortKeys MakeSortKeys(std::span<const ListedNote> notes, const ListedNote& limit, int32_t sortId);

}  // namespace lore
