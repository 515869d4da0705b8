#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/long_list.h"
#include "classify/category_ids.h"

namespace lore {

/// Set numbers are 1, 2 and 3; this one means all three. Any other number selects no set.
inline constexpr int kAllSets = 0;
inline constexpr int kSetCount = 3;

/// One list of note ids for each of the sets 1, 2 and 3.
using SetLists = std::array<LongList, kSetCount>;

/// True if a set argument (0 to 3) takes in the list at an index (0 to 2).
constexpr bool SelectsSet(int set, int index) {
    return set == kAllSets || set == index + 1;
}

/// One category and the subtree below it; a note's path is a chain of the same type, each node with at most one child.
/// A node owns its subtree. Copying or moving a node keeps the `parent` pointers below it true; `parentID` follows only
/// with LinkChildren.
struct CProCategoryTree {
    int32_t id = -1;
    int32_t parentID = -1;
    std::string name;
    CProCategoryTree* parent = nullptr;  ///< not owned; null for a root and for a copy that stands alone
    SetLists notes;                      ///< notes filed here or below, for the sets 1, 2 and 3
    std::vector<CProCategoryTree> children;

    CProCategoryTree() = default;
    CProCategoryTree(int32_t nodeID, std::string nodeName) : id(nodeID), name(std::move(nodeName)) {}
    CProCategoryTree(const CProCategoryTree& other);
    CProCategoryTree(CProCategoryTree&& other) noexcept;
    /// Assignment leaves the place of the target alone: its `parent` stays.
    CProCategoryTree& operator=(const CProCategoryTree& other);
    CProCategoryTree& operator=(CProCategoryTree&& other) noexcept;
    ~CProCategoryTree() = default;

    bool IsUnassigned() const { return id == kUnassignedID; }

    // Structure. Levels count from 0 at a root; whatever a user sees adds 1.

    int GetLevel() const;
    /// True for a path that names no category: no id above 0 and no child.
    bool IsEmptyPath() const { return id < 1 && children.empty(); }
    /// Sets `parentID` and `parent` of every node below this one.
    void LinkChildren();
    /// Numbers the subtree from `first` on and gives the next id, which skips one number behind each child's subtree: a
    /// chain of three from 10 gets 10, 11, 12 and gives 15. A number that can't be given becomes another of `ids`.
    int64_t Renumber(int64_t first, CategoryIDs& ids);
    /// Marks the ids of the subtree as used.
    void MarkIDs(CategoryIDs& ids) const;
    /// Appends a copy, links it and gives its place, which holds until the next child comes.
    CProCategoryTree& AddChild(const CProCategoryTree& child);

    // Finding: depth first, this node before its children. Null if there is none.

    const CProCategoryTree* FindByID(int32_t wanted) const;
    CProCategoryTree* FindByID(int32_t wanted);
    /// Among the direct children, without regard to case.
    const CProCategoryTree* FindChildByName(std::string_view childName) const;

    // Notes. Only ids above 0 are added. `set` is 1, 2, 3 or kAllSets.

    /// In this node and the whole subtree below it.
    void AddNote(int32_t note, int set);
    void RemoveNote(int32_t note, int set);
    /// In this node and its ancestors.
    void AddNoteUpward(int32_t note, int set);
    /// The ids of this node, without duplicates, in the order of the lists. For kAllSets: those in any of the three
    /// lists, but on the `<UNASSIGNED>` node those in all three.
    LongList GetNotes(int set) const;

    // Text and order.

    /// The path from the root, one line "L%d: %s\n" a level, levels from 1.
    std::string GetPathText() const;
    /// Equal ids, parent ids, names and children in turn; note lists play no part.
    bool IsSameTree(const CProCategoryTree& other) const;
    /// Bytes that two trees have in common if and only if they are the same by IsSameTree.
    std::string Identity() const;
    /// The order of paths: trimmed lower-cased names level by level, a path before a longer one with the same
    /// beginning. Below an equal name only first children with ids above 0 are compared.
    bool IsLess(const CProCategoryTree& other) const;

private:
    void AdoptChildren() noexcept;
};

}  // namespace lore
