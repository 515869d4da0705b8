#pragma once

#include <cstdint>
#include <vector>

namespace lore {

/// How a note compares, as numbers.
struct SortKey {
    enum class Kind : uint8_t {
        Plain,
        None,      ///< a note without a category: before all others upwards
        Reserved,  ///< a path of the reserved category, which takes turns with None
    };
    std::vector<int32_t> levels;  ///< ranks; the first differing one decides
    bool openEnd = false;         ///< neither before nor behind longer keys that begin with its levels
    Kind kind = Kind::Plain;
    int32_t tie = 0;  ///< keys with equal levels and equal ties are ordered by date, with unequal ties by nothing
    int64_t date = 0;
};

}  // namespace lore
