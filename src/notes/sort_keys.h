#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "notes/note_list_entry.h"
#include "notes/sort_compare.h"
#include "notes/sort_key.h"

namespace lore {

/// The keys of the notes at some positions by source or by category, so that they compare as CompareNotes compares the
/// notes. Each text is lower-cased once.
std::vector<SortKey> MakeSortKeys(std::span<const ListedNote> notes, const std::vector<uint32_t>& positions,
                                  SortBy sortBy);

}  // namespace lore
