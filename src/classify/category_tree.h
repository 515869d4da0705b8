#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "base/long_list.h"

namespace lore {

/// Id and name of the root that holds the notes without a category. On disk; never change.
inline constexpr int32_t kUnassignedID = 21122112;
inline constexpr char kUnassignedName[] = "<UNASSIGNED>";
/// Set numbers are 1, 2 and 3; this one means all three. Any other number selects no set.
inline constexpr int kAllSets = 0;
inline constexpr int kSetCount = 3;

/// The id behind another; the highest that 32 bits hold stays.
constexpr int32_t CategoryIDAfter(int32_t id) {
    return id == std::numeric_limits<int32_t>::max() ? id : id + 1;
}

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
    /// The highest level among this node and all below it.
    int GetDeepestLevel() const;
    /// True for a path that names no category: no id above 0 and no child.
    bool IsEmptyPath() const { return id < 1 && children.empty(); }
    /// Empty for a root.
    std::string GetParentName() const { return parent ? parent->name : std::string(); }
    /// Sets `parentID` and `parent` of every node below this one.
    void LinkChildren();
    /// Numbers the subtree from `first` on and gives the next id, which skips one number behind each child's subtree: a
    /// chain of three from 10 gets 10, 11, 12 and gives 15. Numbers stop at the highest that 32 bits hold.
    int32_t Renumber(int32_t first);
    /// Appends a copy, links it and gives its place, which holds until the next child comes.
    CProCategoryTree& AddChild(const CProCategoryTree& child);

    // Finding: depth first, this node before its children. Null if there is none.

    const CProCategoryTree* FindByID(int32_t wanted) const;
    CProCategoryTree* FindByID(int32_t wanted);
    /// The first node at this level with exactly this name and this parent's name, with regard to case.
    const CProCategoryTree* FindByPlace(std::string_view nodeName, std::string_view parentName, int level) const;
    CProCategoryTree* FindByPlace(std::string_view nodeName, std::string_view parentName, int level);
    /// Among the direct children, without regard to case.
    const CProCategoryTree* FindChildByName(std::string_view childName) const;
    CProCategoryTree* FindChildByName(std::string_view childName);
    /// The node that many levels down the first children; this node itself for its own level.
    const CProCategoryTree* NodeAtLevel(int level) const;
    CProCategoryTree* NodeAtLevel(int level);

    // Notes. Only ids above 0 are added. `set` is 1, 2, 3 or kAllSets.

    /// In this node and the whole subtree below it.
    void AddNote(int32_t note, int set);
    void RemoveNote(int32_t note, int set);
    /// In this node and its ancestors.
    void AddNoteUpward(int32_t note, int set);
    void RemoveNoteUpward(int32_t note, int set);
    /// For kAllSets: in any of the three lists, but on the `<UNASSIGNED>` node in all three.
    bool HasNote(int32_t note, int set) const;
    bool HasNoteInTree(int32_t note, int set) const;
    bool HasAnyOf(const LongList& wanted, int set) const;
    bool HasNotes(int set) const;
    bool HasNotesInTree(int set) const;
    /// The ids that HasNote holds for, without duplicates, in the order of the lists.
    LongList GetNotes(int set) const;
    /// The notes filed exactly here: those of this node that no node below holds in that set (in any, for kAllSets).
    LongList GetNotesOnlyAtLevel(int set) const;
    /// Appends, for each selected set, what GetNotesOnlyAtLevel gives for every node of the subtree, without
    /// duplicates. With `remove` the notes found leave this node and its ancestors; the nodes below keep theirs.
    void TakeNotesOnlyAtLevels(SetLists& taken, int set, bool remove);

    // Text and order.

    /// The path from the root, one line "L%d: %s\n" a level, levels from 1.
    std::string GetPathText() const;
    /// Equal ids, parent ids, names and children in turn; note lists play no part.
    bool IsSameTree(const CProCategoryTree& other) const;
    /// The order of paths: trimmed lower-cased names level by level, a path before a longer one with the same
    /// beginning. Below an equal name only first children with ids above 0 are compared.
    bool IsLess(const CProCategoryTree& other) const;

private:
    void AdoptChildren() noexcept;
};

}  // namespace lore
