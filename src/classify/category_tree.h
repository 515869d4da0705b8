#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/long_list.h"

namespace lore {

/// Id and name of the root that holds the notes without a category. On disk; never change.
inline constexpr int32_t kUnassignedID = 21122112;
inline constexpr char kUnassignedName[] = "<UNASSIGNED>";
/// Set numbers are 1, 2 and 3; this one means all three.
inline constexpr int kAllSets = 0;
inline constexpr int kSetCount = 3;

/// One category and the subtree below it; a note's path is a chain of the same type, each node with at most one child.
struct CProCategoryTree {
    int32_t id = -1;
    int32_t parentID = -1;
    std::string name;
    CProCategoryTree* parent = nullptr;  ///< not owned; kept true by LinkChildren
    std::array<LongList, kSetCount> notes;  ///< notes filed here or below, for the sets 1, 2 and 3
    std::vector<CProCategoryTree> children;
};

}  // namespace lore
