#include "edit/category_changes.h"

#include "classify/category_edit.h"
#include "notes/notebook_lists.h"

namespace lore {

namespace {

/// Files notes in `forest` where another forest has them, as their stored paths say.
void FileAsBefore(CProCategoryList& forest, const LongList& notes, const PathRewriter& before) {
    forest.RemoveNotes(notes, kAllSets);
    for (const int32_t note : notes) {
        for (int set = 1; set <= kSetCount; ++set) {
            const int32_t place = before.PlaceOf(note, set);
            if (place == kUnassignedID)
                forest.IndexNote(note, CProCategoryTree(), set);
            else if (place > 0)
                forest.IndexNote(note, CProCategoryTree(place, {}), set);
        }
    }
}

}  // namespace

PathRewriter::PathRewriter(const CProCategoryList& forest) {
    for (int set = 1; set <= kSetCount; ++set)
        places_[static_cast<size_t>(set - 1)] = NotePlaces(forest, set);
}

void PathRewriter::Rewrite(CNote& note) const {
    for (size_t i = 0; i < kSetCount; ++i) {
        const auto place = places_[i].find(note.id);
        if (place != places_[i].end())
            note.categories[i] = PathTo(*place->second);
    }
}

int32_t PathRewriter::PlaceOf(int32_t note, int set) const {
    const auto& places = places_[static_cast<size_t>(set - 1)];
    const auto place = places.find(note);
    return place == places.end() ? -1 : place->second->id;
}

SavedCategories SaveCategoryTrees(EditWorld& world, const CProCategoryList& edited, CNoteList* list) {
    SavedCategories result;
    CProCategoryList& forest = world.book.categories;
    const LongList touched = NotesWithOtherPaths(forest, edited);
    auto [both, hasVanished] = WithVanished(forest, edited);
    if (!WriteCategories(world.book, both, world.faults))
        return result;
    result.saved = true;
    const PathRewriter rewriter(edited);
    result.notes = ChangeNotes(world, touched,
                               {[&](CNote& note) {
                                    rewriter.Rewrite(note);
                                    return true;
                                },
                                [](CSyncInfo& info, const DateTime& nowUtc) { info.CategoriesChanged = nowUtc; }},
                               list);
    if (result.notes.failed.IsEmpty()) {
        forest.Assign(edited);
        if (hasVanished)
            WriteCategories(world.book, forest, world.faults);
        return result;
    }
    FileAsBefore(both, result.notes.failed, PathRewriter(forest));
    forest.Assign(both);
    return result;
}

}  // namespace lore
