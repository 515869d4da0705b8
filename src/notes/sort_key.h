#pragma once

#include <boost/container/small_vector.hpp>
#include <cstdint>

namespace lore {

/// The levels of a key; few have more than four.
using SortLevels = boost::container::small_vector<int32_t, 4>;

/// How a note compares, as numbers.
struct SortKey {  // NOLINT(bugprone-exception-escape): levels that move take no memory
    enum class Kind : uint8_t {
        Plain,
        None,      ///< a note without a category: before all others upwards
        Reserved,  ///< a path of the reserved category, which takes turns with None
    };
    SortLevels levels;     ///< ranks; the first differing one decides
    bool openEnd = false;  ///< neither before nor behind longer keys that begin with its levels
    Kind kind = Kind::Plain;
    bool starts = true;  ///< comes before the limit, so that a walk can begin with it
    int32_t tie = 0;     ///< keys with equal levels and equal ties are ordered by date, with unequal ties by nothing
    int64_t date = 0;
};

}  // namespace lore
