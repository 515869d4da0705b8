#include "classify/category_merge.h"

#include <algorithm>

namespace lore {

namespace {

/// One merge of a subtree into another.
struct Merging {
    int64_t nextID;
    CategoryIDs& ids;
    int32_t highest = -1;  // highest id given out
    bool added = false;

    void Into(CProCategoryTree& hit, CProCategoryTree& node, ChildPlaces& places) {
        for (size_t i = 0; i < kSetCount; ++i)
            hit.notes[i].Merge(node.notes[i]);
        for (CProCategoryTree& child : node.children) {
            const size_t position = places.Find(hit.children, child.name);
            if (position == ChildPlaces::kNone) {
                nextID = child.Renumber(nextID, ids);
                added = true;
                highest = std::max(highest, HighestCategoryID(child));
                hit.children.push_back(child);
            } else {
                child.id = hit.children[position].id;
                Into(hit.children[position], child, places.Below(position));
            }
        }
    }
};

}  // namespace

size_t ChildPlaces::Find(const std::vector<CProCategoryTree>& siblings, const std::string& name) {
    for (; seen_ < siblings.size(); ++seen_)
        positions_.emplace(siblings[seen_].name, seen_);
    const auto found = positions_.find(name);
    return found == positions_.end() ? kNone : found->second;
}

ChildPlaces& ChildPlaces::Below(size_t position) {
    if (below_.size() <= position)
        below_.resize(position + 1);
    if (!below_[position])
        below_[position] = std::make_unique<ChildPlaces>();
    return *below_[position];
}

int64_t MergeInto(CProCategoryTree& hit, CProCategoryTree& node, int64_t nextID, CategoryIDs& ids) {
    Merging merging{nextID, ids};
    ChildPlaces places;
    merging.Into(hit, node, places);
    hit.LinkChildren();
    node.LinkChildren();
    return merging.nextID;
}

CategoryMerger::CategoryMerger(CProCategoryList& forest, int& maxCategoryID)
    : forest_(forest), maxCategoryID_(maxCategoryID), highest_(forest.HighestID()), ids_(forest.UsedIDs()) {}

CategoryMerger::~CategoryMerger() {
    forest_.LinkAll();
}

int64_t CategoryMerger::NextID() {
    return int64_t{RaiseToHighest(highest_, maxCategoryID_)} + 1;
}

void CategoryMerger::MergePath(int32_t note, CProCategoryTree& chain, int set) {
    chain.AddNote(note, set);
    if (chain.name.empty() || chain.name == kUnassignedName)
        return chain.LinkChildren();
    std::vector<CProCategoryTree>& roots = forest_.EditRoots();
    const size_t position = places_.Find(roots, chain.name);
    if (position == ChildPlaces::kNone) {
        chain.Renumber(NextID(), ids_);
        forest_.AddRoot(chain);
        added_ = true;
        highest_ = std::max(highest_, HighestCategoryID(chain));
        return;
    }
    chain.id = roots[position].id;
    Merging merging{NextID(), ids_};
    merging.Into(roots[position], chain, places_.Below(position));
    highest_ = std::max(highest_, merging.highest);
    added_ = added_ || merging.added;
    chain.LinkChildren();
}

void CategoryMerger::MergeEmptyCategories(const std::vector<CCategoryTree>& trees) {
    for (const CCategoryTree& tree : trees) {
        CProCategoryTree chain;
        if (ChainFromOldPath(tree, chain))
            MergePath(-1, chain, -1);
    }
}

}  // namespace lore
