#include "edit/new_category.h"

#include <algorithm>
#include <unordered_set>

namespace lore {

namespace {

std::unordered_set<int32_t> IDsOfPaths(const CNote& note) {
    std::unordered_set<int32_t> ids;
    for (const CProCategoryTree& path : note.categories) {
        for (const CProCategoryTree* node = &path; node; node = node->children.empty() ? nullptr : &node->children[0])
            ids.insert(node->id);
    }
    return ids;
}

bool AddTo(CProCategoryList& forest, const NewCategory& category) {
    const CProCategoryTree node(category.id, category.name);
    if (category.parentID < 0) {
        forest.AddRoot(node);
        return true;
    }
    CProCategoryTree* const parent = forest.FindByID(category.parentID);
    if (!parent)
        return false;
    parent->AddChild(node);
    forest.LinkAll();
    return true;
}

}  // namespace

int32_t AddUsedCategories(CProCategoryList& forest, const std::vector<NewCategory>& made, const CNote& note) {
    const std::unordered_set<int32_t> used = IDsOfPaths(note);
    int32_t highest = 0;
    for (const NewCategory& category : made) {
        const bool isWanted = used.contains(category.id) && !forest.FindByID(category.id);
        if (isWanted && AddTo(forest, category))
            highest = std::max(highest, category.id);
    }
    return highest;
}

}  // namespace lore
