#pragma once

#include <string_view>

#include "classify/category_list.h"

namespace lore {

/// A category forest from lines of names, indented by two blanks a level (UTF-8), behind the root of the notes without
/// a category. Ids follow the last one given out, which is raised.
CProCategoryList ReadSampleCategories(std::string_view text, int& maxCategoryID);

/// The chain of categories down "Level 1/Level 2/..." (UTF-8) with the ids of the forest; an empty path if the forest
/// lacks one of them.
CProCategoryTree SampleCategoryPath(const CProCategoryList& forest, std::string_view path);

}  // namespace lore
