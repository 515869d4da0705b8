#include <algorithm>
#include <unordered_set>

#include "classify/category_tree.h"
#include "classify/note_lists.h"

namespace lore {

namespace {

using IDs = std::unordered_set<int32_t>;

/// Calls `act(list)` for the lists of a node that a set argument selects.
template <typename Node, typename Act>
void ForLists(Node& node, int set, Act act) {
    for (int i = 0; i < kSetCount; ++i)
        if (SelectsSet(set, i))
            act(node.notes[static_cast<size_t>(i)]);
}

template <typename Act>
void ForTree(CProCategoryTree& node, const Act& act) {
    act(node);
    for (CProCategoryTree& child : node.children)
        ForTree(child, act);
}

template <typename Test>
bool AnyInTree(const CProCategoryTree& node, const Test& test) {
    return test(node) || std::any_of(node.children.begin(), node.children.end(),
                                     [&](const CProCategoryTree& child) { return AnyInTree(child, test); });
}

template <typename Act>
void ForUpward(CProCategoryTree& node, const Act& act) {
    for (CProCategoryTree* at = &node; at; at = at->parent)
        act(*at);
}

bool InAllLists(const CProCategoryTree& node, int32_t note) {
    return std::all_of(node.notes.begin(), node.notes.end(), [&](const LongList& list) { return list.Contains(note); });
}

/// Gathers the ids that stand in a subtree's lists for a set.
void GatherBelow(const CProCategoryTree& node, int set, IDs& ids) {
    for (const CProCategoryTree& child : node.children) {
        ForLists(child, set, [&](const LongList& list) { ids.insert(list.begin(), list.end()); });
        GatherBelow(child, set, ids);
    }
}

/// Appends what each node of a subtree alone holds, in the order of the nodes, and gives all ids that the subtree
/// holds.
IDs GatherExact(const CProCategoryTree& node, size_t index, std::vector<LongList>& exact) {
    const size_t own = exact.size();
    exact.emplace_back();
    IDs held;
    for (const CProCategoryTree& child : node.children) {
        IDs below = GatherExact(child, index, exact);
        if (below.size() > held.size())
            held.swap(below);
        held.insert(below.begin(), below.end());
    }
    for (const int32_t note : node.notes[index])
        if (!held.contains(note))
            exact[own].AddUnique(note);
    held.insert(node.notes[index].begin(), node.notes[index].end());
    return held;
}

}  // namespace

void CProCategoryTree::AddNote(int32_t note, int set) {
    if (note > 0)
        ForTree(*this, [&](CProCategoryTree& node) { ForLists(node, set, [&](LongList& l) { l.AddUnique(note); }); });
}

void CProCategoryTree::RemoveNote(int32_t note, int set) {
    ForTree(*this, [&](CProCategoryTree& node) { ForLists(node, set, [&](LongList& l) { l.RemoveValue(note); }); });
}

void CProCategoryTree::AddNoteUpward(int32_t note, int set) {
    if (note > 0)
        ForUpward(*this, [&](CProCategoryTree& node) { ForLists(node, set, [&](LongList& l) { l.AddUnique(note); }); });
}

void CProCategoryTree::RemoveNoteUpward(int32_t note, int set) {
    ForUpward(*this, [&](CProCategoryTree& node) { ForLists(node, set, [&](LongList& l) { l.RemoveValue(note); }); });
}

bool CProCategoryTree::HasNote(int32_t note, int set) const {
    if (set == kAllSets && IsUnassigned())
        return InAllLists(*this, note);
    bool has = false;
    ForLists(*this, set, [&](const LongList& list) { has = has || list.Contains(note); });
    return has;
}

bool CProCategoryTree::HasNoteInTree(int32_t note, int set) const {
    return AnyInTree(*this, [&](const CProCategoryTree& node) { return node.HasNote(note, set); });
}

bool CProCategoryTree::HasAnyOf(const LongList& wanted, int set) const {
    return std::any_of(wanted.begin(), wanted.end(), [&](int32_t note) { return HasNote(note, set); });
}

bool CProCategoryTree::HasNotes(int set) const {
    if (set == kAllSets && IsUnassigned())
        return HasAnyOf(notes[0], kAllSets);
    bool has = false;
    ForLists(*this, set, [&](const LongList& list) { has = has || !list.IsEmpty(); });
    return has;
}

bool CProCategoryTree::HasNotesInTree(int set) const {
    return AnyInTree(*this, [&](const CProCategoryTree& node) { return node.HasNotes(set); });
}

LongList CProCategoryTree::GetNotes(int set) const {
    LongList all;
    const bool inAll = set == kAllSets && IsUnassigned();
    ForLists(*this, set, [&](const LongList& list) {
        for (const int32_t note : list)
            if (!inAll || InAllLists(*this, note))
                all.AddUnique(note);
    });
    return all;
}

LongList CProCategoryTree::GetNotesOnlyAtLevel(int set) const {
    IDs below;
    GatherBelow(*this, set, below);
    const LongList all = GetNotes(set);
    std::vector<int32_t> exact;
    std::copy_if(all.begin(), all.end(), std::back_inserter(exact),
                 [&](int32_t note) { return !below.contains(note); });
    return LongList(std::move(exact));
}

void CProCategoryTree::TakeNotesOnlyAtLevels(SetLists& taken, int set, bool remove) {
    for (size_t i = 0; i < kSetCount; ++i) {
        if (!SelectsSet(set, static_cast<int>(i)))
            continue;
        std::vector<LongList> exact;
        GatherExact(*this, i, exact);
        LongList own;
        for (const LongList& list : exact)
            own.Merge(list);
        if (remove)
            ForUpward(*this, [&](CProCategoryTree& node) { RemoveEach(node.notes[i], own); });
        taken[i].Merge(own);
    }
}

}  // namespace lore
