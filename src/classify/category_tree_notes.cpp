#include <algorithm>

#include "classify/category_tree.h"

namespace lore {

namespace {

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

template <typename Act>
void ForUpward(CProCategoryTree& node, const Act& act) {
    for (CProCategoryTree* at = &node; at; at = at->parent)
        act(*at);
}

bool InAllLists(const CProCategoryTree& node, int32_t note) {
    return std::all_of(node.notes.begin(), node.notes.end(), [&](const LongList& list) { return list.Contains(note); });
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

}  // namespace lore
