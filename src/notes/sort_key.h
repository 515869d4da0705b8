#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lore {

/// What notes of the same sources, or of the same path, have in common when they are sorted.
struct SortGroup {
    enum class Kind : uint8_t {
        Plain,
        None,      ///< notes without a category: before all others upwards
        Reserved,  ///< a path of the reserved category, which takes turns with None
    };
    uint32_t firstLevel = 0, levelCount = 0;  ///< where its levels stand in SortKeys::levels
    bool openEnd = false;                     ///< neither before nor after longer ones that begin with its levels
    Kind kind = Kind::Plain;
};

/// How a note compares, as numbers.
struct SortKey {
    int64_t date = 0;
    uint32_t group = 0;  ///< which one of SortKeys::groups
    int32_t tie = 0;     ///< keys with equal levels and equal ties are ordered by date, with unequal ties by nothing
    bool starts = true;  ///< comes before the limit, so that a walk can begin with it
};

/// The keys of a list. Several groups may have equal levels, and one may have no note.
struct SortKeys {
    std::vector<int32_t> levels;  ///< ranks; the first differing one of two groups decides
    std::vector<SortGroup> groups;
    std::vector<SortKey> notes;  ///< in list order

    const SortGroup& GroupOf(size_t note) const { return groups[notes[note].group]; }
    std::span<const int32_t> LevelsOf(const SortGroup& group) const {
        return std::span(levels).subspan(group.firstLevel, group.levelCount);
    }
};

}  // namespace lore
