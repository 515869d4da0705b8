#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "classify/category_list.h"
#include "notes/note.h"

namespace lore {

/// A category that was made while a note was edited, and that isn't in the forest yet.
struct NewCategory {
    int32_t id = -1;
    int32_t parentID = -1;  ///< -1 for a root; of the forest, or of a new category before this one
    std::string name;
};

/// Puts those categories into the forest that one of the note's paths leads through. The forest may have got others
/// since they were made: a category that has a sibling of its name there is that sibling, and one whose id is another's
/// by now gets the next free one. `made` and the note's paths follow. A category whose parent isn't there is left out.
/// `maxCategoryID` is the stored counter, raised by what was added. True if something was.
bool AddUsedCategories(CProCategoryList& forest, std::vector<NewCategory>& made, CNote& note, int& maxCategoryID);

}  // namespace lore
