#include "app/sample_categories.h"

#include <algorithm>
#include <string>

#include "base/text.h"

namespace lore {
namespace {

constexpr size_t kBlanksPerLevel = 2;

/// The list that a node of this level goes into, below the last node of each level above.
std::vector<CProCategoryTree>& ChildrenAt(std::vector<CProCategoryTree>& roots, size_t level) {
    std::vector<CProCategoryTree>* list = &roots;
    while (level-- > 0 && !list->empty())
        list = &list->back().children;
    return *list;
}

const CProCategoryTree* FindExactly(const std::vector<CProCategoryTree>& list, std::string_view name) {
    const auto found = std::ranges::find(list, name, &CProCategoryTree::name);
    return found == list.end() ? nullptr : &*found;
}

}  // namespace

CProCategoryList ReadSampleCategories(std::string_view text, int& maxCategoryID) {
    CProCategoryList forest;
    forest.AddRoot(CProCategoryTree(kUnassignedID, kUnassignedName));
    std::vector<CProCategoryTree>& roots = forest.EditRoots();
    CategoryIDs ids;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = TrimRight(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::string_view name = TrimLeft(line);
        if (name.empty())
            continue;
        if (CounterAfter(maxCategoryID) == kUnassignedID)
            maxCategoryID = kUnassignedID;  // from which the next one steps on
        int64_t wanted = int64_t{RaiseToHighest(maxCategoryID, maxCategoryID)} + 1;
        const int32_t id = ids.Take(wanted);
        maxCategoryID = std::max(maxCategoryID, id);
        ChildrenAt(roots, (line.size() - name.size()) / kBlanksPerLevel).emplace_back(id, FromUtf8(name));
    }
    forest.LinkAll();
    return forest;
}

CProCategoryTree SampleCategoryPath(const CProCategoryList& forest, std::string_view path) {
    CProCategoryTree first;
    CProCategoryTree* deepest = nullptr;
    const std::vector<CProCategoryTree>* list = &forest.Roots();
    while (!path.empty()) {
        const size_t end = std::min(path.find('/'), path.size());
        const CProCategoryTree* node = FindExactly(*list, FromUtf8(path.substr(0, end)));
        if (!node)
            return {};
        path.remove_prefix(std::min(end + 1, path.size()));
        CProCategoryTree step(node->id, node->name);
        deepest = deepest ? &deepest->AddChild(step) : &(first = step);
        list = &node->children;
    }
    first.LinkChildren();
    return first;
}

}  // namespace lore
