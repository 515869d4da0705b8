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
    /// `lost` are ids of categories that the forest has lost, while notes still name them: they would stand in a new
    /// one.
    explicit CategoryIDs(const PassedIDs& lost = {}) : passed_(lost) { passed_.Add(kUnassignedID); }

    /// An id that isn't to be given out.
    void MarkUsed(int32_t id) { used_.Add(id); }
    /// Another id of a lost category.
    void MarkLost(int32_t id) { passed_.Add(id); }
    /// Gives the wanted number, or the one after it for the reserved id and those that are lost, and moves `wanted` on
    /// past it. Where that number can't be had, the lowest free one.
    int32_t Take(int64_t& wanted) {
        wanted = passed_.Behind(wanted);
        const int32_t id =
            free_.Find(wanted, [this](int32_t other) { return passed_.Contains(other) || used_.Contains(other); });
        used_.Add(id);
        ++wanted;
        return id;
    }

private:
    static constexpr int32_t kFirstID = 4;

    IDMarks used_;
    PassedIDs passed_;
    FreeIDs free_{kFirstID};
};

}  // namespace lore
