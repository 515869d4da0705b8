#include "edit/new_category.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "base/text.h"

namespace lore {

namespace {

/// An id alone may be that of another category by now.
using Known = std::pair<int32_t, std::string>;

template <typename Take>
void ForEachNode(CProCategoryTree& path, Take take) {
    for (CProCategoryTree* node = &path; node; node = node->children.empty() ? nullptr : &node->children[0])
        take(*node);
}

/// The one with exactly this name, else the first that has it without regard to case; null if there is none.
const CProCategoryTree* FindSibling(const std::vector<CProCategoryTree>& siblings, const std::string& name) {
    auto found = std::find_if(siblings.begin(), siblings.end(),
                              [&](const CProCategoryTree& sibling) { return sibling.name == name; });
    if (found == siblings.end())
        found = std::find_if(siblings.begin(), siblings.end(),
                             [&](const CProCategoryTree& sibling) { return EqualNoCase(sibling.name, name); });
    return found == siblings.end() ? nullptr : &*found;
}

/// One run of AddUsedCategories.
class Adding {
public:
    Adding(CProCategoryList& forest, const std::vector<NewCategory>& made, int& maxCategoryID)
        : forest_(forest), maxCategoryID_(maxCategoryID), ids_(forest.UsedIDs()) {
        int32_t highest = forest.HighestID();
        for (const NewCategory& category : made) {
            ids_.MarkUsed(category.id);
            highest = std::max(highest, category.id);
        }
        int counter = maxCategoryID;
        nextID_ = int64_t{RaiseToHighest(highest, counter)} + 1;
    }

    /// False if the parent isn't there. Else the category has the id and the name that it has in the forest.
    bool Add(NewCategory& category) {
        CProCategoryTree* const parent = category.parentID < 0 ? nullptr : forest_.FindByID(category.parentID);
        if (category.parentID >= 0 && !parent)
            return false;
        if (const CProCategoryTree* const sibling =
                FindSibling(parent ? parent->children : std::as_const(forest_).Roots(), category.name)) {
            category.id = sibling->id;
            category.name = sibling->name;
            return true;
        }
        if (std::as_const(forest_).FindByID(category.id))
            category.id = ids_.Take(nextID_);
        const CProCategoryTree node(category.id, category.name);
        if (parent)
            parent->AddChild(node);
        else
            forest_.AddRoot(node);
        forest_.LinkAll();
        maxCategoryID_ = std::max(maxCategoryID_, category.id);
        added_ = true;
        return true;
    }
    bool HasAdded() const { return added_; }

private:
    CProCategoryList& forest_;
    int& maxCategoryID_;
    CategoryIDs ids_;
    int64_t nextID_ = 0;
    bool added_ = false;
};

}  // namespace

bool AddUsedCategories(CProCategoryList& forest, std::vector<NewCategory>& made, CNote& note, int& maxCategoryID) {
    std::set<Known> used;
    for (CProCategoryTree& path : note.categories)
        ForEachNode(path, [&](const CProCategoryTree& node) { used.emplace(node.id, node.name); });
    std::map<Known, Known> places;
    std::map<int32_t, int32_t> parents;
    Adding adding(forest, made, maxCategoryID);
    for (NewCategory& category : made) {
        if (const auto parent = parents.find(category.parentID); parent != parents.end())
            category.parentID = parent->second;
        const Known before(category.id, category.name);
        if (!used.contains(before) || !adding.Add(category))
            continue;
        places.emplace(before, Known(category.id, category.name));
        parents.emplace(before.first, category.id);
    }
    for (CProCategoryTree& path : note.categories) {
        bool follows = false;
        ForEachNode(path, [&](CProCategoryTree& node) {
            const auto place = places.find({node.id, node.name});
            if (place == places.end())
                return;
            std::tie(node.id, node.name) = place->second;
            follows = true;
        });
        if (follows)
            path.LinkChildren();
    }
    return adding.HasAdded();
}

}  // namespace lore
