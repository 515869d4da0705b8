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

/// Puts those categories into the forest that one of the note's paths leads through. Gives the highest id that was
/// added, 0 for none. A category whose parent isn't there is left out.
int32_t AddUsedCategories(CProCategoryList& forest, const std::vector<NewCategory>& made, const CNote& note);

}  // namespace lore
