#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "notes/note_list_entry.h"
#include "notes/sort_compare.h"
#include "notes/sort_key.h"

namespace lore {

/// The keys of the notes that can be sorted, and where the notes stand.
struct SortKeys {
    std::vector<SortKey> keys;
    std::vector<uint32_t> positions;  ///< of the keys' notes
    std::vector<uint32_t> behind;     ///< of the notes that don't come before the limit, in list order
};

/// The keys of the notes by source or by category, so that they compare as CompareNotes compares the notes. A note that
/// doesn't come before `limit` gets none. Each text is lower-cased once, each path walked once.
SortKeys MakeSortKeys(std::span<const ListedNote> notes, const ListedNote& limit, int32_t sortId);

}  // namespace lore
