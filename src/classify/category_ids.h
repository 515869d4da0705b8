#pragma once

#include <cstdint>

#include "base/free_ids.h"
#include "base/id_marks.h"

namespace lore {

/// Id and name of the root that holds the notes without a category. On disk; never change.
inline constexpr int32_t kUnassignedID = 21122112;
inline constexpr char kUnassignedName[] = "<UNASSIGNED>";

/// Gives ids to new categories of one forest. The reserved id is none of them, and no forest that fits into the memory
/// uses up the others.
class CategoryIDs {
public:
    /// An id that isn't to be given out.
    void MarkUsed(int32_t id) { used_.Add(id); }
    /// The id of a category that the forest has lost, while notes still name it: they would stand in the new one.
    void MarkLost(int32_t id) {
        used_.Add(id);
        lost_.Add(id);
    }
    /// Gives the wanted number, or the one behind it for the reserved id and those that are lost, and moves `wanted` on
    /// behind it. Where that number can't be had, the lowest free one.
    int32_t Take(int64_t& wanted) {
        while (wanted == kUnassignedID || (wanted <= kHighestID && lost_.Contains(static_cast<int32_t>(wanted))))
            ++wanted;
        const int32_t id =
            free_.Find(wanted, [this](int32_t other) { return other == kUnassignedID || used_.Contains(other); });
        used_.Add(id);
        ++wanted;
        return id;
    }

private:
    static constexpr int32_t kFirstID = 4;

    IDMarks used_, lost_;
    FreeIDs free_{kFirstID};
};

}  // namespace lore
