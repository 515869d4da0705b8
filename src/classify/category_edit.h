#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "classify/category_list.h"

namespace lore {

// What is done to a forest as a whole. All of it leaves the forest linked and its note lists true.

/// Takes a category with all below it, and their notes, out of the forest. `id` must be in it.
CProCategoryTree TakeSubtree(CProCategoryList& forest, int32_t id);
/// Hangs a subtree below a category, or as the last root for -1, and enters its notes in the categories above.
void HangSubtree(CProCategoryList& forest, const CProCategoryTree& subtree, int32_t parentID);
/// Merges a subtree into a category that stands for the same, and enters its notes above. Categories that the target
/// lacks are numbered anew; `maxCategoryID` is the stored counter.
void MergeSubtree(CProCategoryList& forest, CProCategoryTree subtree, int32_t targetId, int& maxCategoryID);
/// Moves notes, in each set those of its list, from wherever they stand to `<UNASSIGNED>`.
void UnassignNotes(CProCategoryList& forest, const SetLists& notes);
/// Files notes that are unassigned in a set (1, 2 or 3) in a category.
void AssignNotes(CProCategoryList& forest, const LongList& notes, int set, int32_t id);

/// In which category each note is filed in one set (1, 2 or 3): the end of the path of categories that hold it, or
/// `<UNASSIGNED>`. Notes that the forest doesn't hold in this set are left out. The pointers live as long as the forest
/// stays as it is.
std::unordered_map<int32_t, const CProCategoryTree*> NotePlaces(const CProCategoryList& forest, int set);
/// The path that leads to a category, as a note stores it; an empty path for `<UNASSIGNED>`.
CProCategoryTree PathTo(const CProCategoryTree& node);

/// The notes whose path in any set isn't the same in both forests, in ascending order. A note that the later forest
/// doesn't hold in a set keeps its path there.
LongList NotesWithOtherPaths(const CProCategoryList& before, const CProCategoryList& after);

struct JoinedForest {
    CProCategoryList forest;
    bool hasVanished = false;  ///< there are categories that the later forest lacks
};

/// `after`, and behind it at their places the categories of `before` that it lacks, without notes. Every id that a note
/// stores before or after the change is in it.
JoinedForest WithVanished(const CProCategoryList& before, const CProCategoryList& after);

}  // namespace lore
