#include "classify/category_edit.h"

#include <algorithm>
#include <map>
#include <utility>

#include "classify/category_merge.h"
#include "classify/note_lists.h"

namespace lore {

namespace {

void AddUpward(CProCategoryTree* node, const SetLists& notes) {
    for (; node; node = node->parent)
        for (size_t i = 0; i < kSetCount; ++i)
            node->notes[i].Merge(notes[i]);
}

void RemoveUpward(CProCategoryTree* node, const SetLists& notes) {
    for (; node; node = node->parent)
        for (size_t i = 0; i < kSetCount; ++i)
            RemoveEach(node->notes[i], notes[i]);
}

using Places = std::unordered_map<int32_t, const CProCategoryTree*>;

/// A note follows from a category to the first of its subcategories that holds it.
void Place(const CProCategoryTree& node, size_t index, Places& places) {
    for (const int32_t note : node.notes[index]) {
        const auto [place, isNew] = places.emplace(note, &node);
        if (!isNew && node.parent && place->second == node.parent)
            place->second = &node;
    }
    for (const CProCategoryTree& child : node.children)
        Place(child, index, places);
}

/// Collects the ids of categories whose path has other ids or names than before.
void CollectChanged(const CProCategoryTree& node, const CProCategoryList& before, bool isChanged,
                    std::unordered_set<int32_t>& changed) {
    const CProCategoryTree* const old = before.FindByID(node.id);
    isChanged = isChanged || !old || old->name != node.name || old->parentID != node.parentID;
    if (isChanged)
        changed.insert(node.id);
    for (const CProCategoryTree& child : node.children)
        CollectChanged(child, before, isChanged, changed);
}

using Vanished = std::map<int32_t, std::vector<CProCategoryTree>>;

/// The subtrees of categories that have gone, by the id of the category above that is still there; -1 for roots.
void CollectVanished(const CProCategoryTree& node, const CProCategoryList& after, int32_t parentID,
                     CProCategoryTree* above, Vanished& vanished) {
    const bool isThere = after.FindByID(node.id);
    CProCategoryTree copy(node.id, node.name);
    for (const CProCategoryTree& child : node.children)
        CollectVanished(child, after, isThere ? node.id : parentID, isThere ? nullptr : &copy, vanished);
    if (isThere)
        return;
    if (above)
        above->children.push_back(std::move(copy));
    else
        vanished[parentID].push_back(std::move(copy));
}

void Append(std::vector<CProCategoryTree>& siblings, int32_t parentID, const Vanished& vanished) {
    for (CProCategoryTree& node : siblings)
        Append(node.children, node.id, vanished);
    if (const auto found = vanished.find(parentID); found != vanished.end())
        siblings.insert(siblings.end(), found->second.begin(), found->second.end());
}

}  // namespace

CProCategoryTree TakeSubtree(CProCategoryList& forest, int32_t id) {
    CProCategoryTree* const node = forest.FindByID(id);
    RemoveUpward(node->parent, node->notes);
    std::vector<CProCategoryTree>& siblings = node->parent ? node->parent->children : forest.EditRoots();
    const auto place = node - siblings.data();
    CProCategoryTree taken = std::move(*node);
    // The node is one of them.
    // cppcheck-suppress mismatchingContainerIterator
    siblings.erase(siblings.begin() + place);
    taken.parent = nullptr;
    forest.LinkAll();
    return taken;
}

void HangSubtree(CProCategoryList& forest, const CProCategoryTree& subtree, int32_t parentID) {
    CProCategoryTree* const parent = parentID < 0 ? nullptr : forest.FindByID(parentID);
    AddUpward(parent, subtree.notes);
    if (parent)
        parent->AddChild(subtree);
    else
        forest.AddRoot(subtree);
    forest.LinkAll();
}

void MergeSubtree(CProCategoryList& forest, CProCategoryTree subtree, int32_t targetId, int& maxCategoryID) {
    // The subtree's own ids are taken too, though they stand in the forest no more.
    const int32_t highest = std::max(forest.HighestID(), HighestCategoryID(subtree));
    const int64_t nextID = int64_t{RaiseToHighest(highest, maxCategoryID)} + 1;
    CategoryIDs ids = forest.UsedIDs();
    subtree.MarkIDs(ids);
    CProCategoryTree* const target = forest.FindByID(targetId);
    AddUpward(target->parent, subtree.notes);
    MergeInto(*target, subtree, nextID, ids);
    forest.LinkAll();
}

void UnassignNotes(CProCategoryList& forest, const SetLists& notes) {
    if (!forest.FindByID(kUnassignedID))
        forest.AddRoot({kUnassignedID, kUnassignedName});
    for (size_t i = 0; i < kSetCount; ++i) {
        // A copy: the list may be one of those that the notes are taken out of.
        const LongList moved = notes[i];  // NOLINT(performance-unnecessary-copy-initialization)
        if (moved.IsEmpty())
            continue;
        forest.RemoveNotes(moved, static_cast<int>(i) + 1);
        forest.FindByID(kUnassignedID)->notes[i].Merge(moved);
    }
    forest.LinkAll();
}

void AssignNotes(CProCategoryList& forest, const LongList& notes, int set, int32_t id) {
    SetLists moved;
    moved[static_cast<size_t>(set - 1)] = notes;
    forest.RemoveNotes(notes, set);
    AddUpward(forest.FindByID(id), moved);
}

std::unordered_map<int32_t, const CProCategoryTree*> NotePlaces(const CProCategoryList& forest, int set) {
    Places places;
    const auto index = static_cast<size_t>(set - 1);
    for (const CProCategoryTree& root : forest.Roots())
        if (!root.IsUnassigned())
            Place(root, index, places);
    for (const CProCategoryTree& root : forest.Roots())
        if (root.IsUnassigned())
            Place(root, index, places);
    return places;
}

CProCategoryTree PathTo(const CProCategoryTree& node) {
    CProCategoryTree path;
    if (node.IsUnassigned())
        return path;
    bool isEnd = true;
    for (const CProCategoryTree* at = &node; at; at = at->parent) {
        CProCategoryTree above(at->id, at->name);
        if (!std::exchange(isEnd, false))
            above.children.push_back(std::move(path));
        path = std::move(above);
    }
    path.LinkChildren();
    return path;
}

LongList NotesWithOtherPaths(const CProCategoryList& before, const CProCategoryList& after) {
    std::unordered_set<int32_t> changed;
    for (const CProCategoryTree& root : after.Roots())
        CollectChanged(root, before, false, changed);
    std::vector<int32_t> notes;
    for (int set = 1; set <= kSetCount; ++set) {
        const Places old = NotePlaces(before, set);
        for (const auto& [note, place] : NotePlaces(after, set)) {
            const auto was = old.find(note);
            if (was == old.end() || was->second->id != place->id || changed.contains(place->id))
                notes.push_back(note);
        }
    }
    std::sort(notes.begin(), notes.end());
    notes.erase(std::unique(notes.begin(), notes.end()), notes.end());
    return LongList(std::move(notes));
}

JoinedForest WithVanished(const CProCategoryList& before, const CProCategoryList& after) {
    Vanished vanished;
    for (const CProCategoryTree& root : before.Roots())
        CollectVanished(root, after, -1, nullptr, vanished);
    JoinedForest both;
    both.hasVanished = !vanished.empty();
    both.forest.Assign(after);
    Append(both.forest.EditRoots(), -1, vanished);
    both.forest.LinkAll();
    return both;
}

}  // namespace lore
