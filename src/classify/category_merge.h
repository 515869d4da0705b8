#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "classify/category_list.h"
#include "classify/old_category.h"

namespace lore {

/// Where the children of a node stand, by name; the first of equal names counts. It is filled as it is asked and must
/// see every child that is added in the meantime.
class ChildPlaces {
public:
    static constexpr size_t kNone = static_cast<size_t>(-1);
    /// The position of the first sibling with exactly this name, or kNone.
    size_t Find(const std::vector<CProCategoryTree>& siblings, const std::string& name);
    /// The places below the sibling at a position.
    ChildPlaces& Below(size_t position);

private:
    size_t seen_ = 0;  // how many siblings stand in positions_
    std::unordered_map<std::string, size_t> positions_;
    std::vector<std::unique_ptr<ChildPlaces>> below_;
};

/// Merges a subtree into the node that stands for the same category: notes are added, children that are missing are
/// numbered from `nextID` on, out of the ids of the forest, and appended as copies, children of the same name are
/// merged in turn. The ids of the forest are written back into `node`. Gives the number after the last one.
int64_t MergeInto(CProCategoryTree& hit, CProCategoryTree& node, int64_t nextID, CategoryIDs& ids);

/// Brings many paths into one forest in time that follows their length. Between construction and destruction nobody
/// else may change the forest.
class CategoryMerger {
public:
    /// `maxCategoryID` is the stored counter, raised as GetMaxCategoryID does.
    CategoryMerger(CProCategoryList& forest, int& maxCategoryID);
    CategoryMerger(const CategoryMerger&) = delete;
    CategoryMerger& operator=(const CategoryMerger&) = delete;
    /// Links the forest.
    ~CategoryMerger();

    /// Brings a chain into the forest, creating the categories that are missing, with the note filed in the set (1, 2,
    /// 3) along the chain; a note id below 1 files nothing. The chain gets the ids of the forest. A chain that begins
    /// with an empty name or `<UNASSIGNED>` stays out.
    void MergePath(int32_t note, CProCategoryTree& chain, int set);
    /// Brings in categories that have no notes.
    void MergeEmptyCategories(const std::vector<CCategoryTree>& trees);
    /// No new category gets this id.
    void MarkLost(int32_t id) { ids_.MarkLost(id); }
    /// True if the forest has got more categories.
    bool HasAdded() const { return added_; }

private:
    int64_t NextID();

    CProCategoryList& forest_;
    int& maxCategoryID_;
    int32_t highest_;  // highest id of the forest
    CategoryIDs ids_;
    bool added_ = false;
    ChildPlaces places_;
};

}  // namespace lore
