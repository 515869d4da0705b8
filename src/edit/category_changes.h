#pragma once

#include <array>
#include <unordered_map>

#include "classify/category_list.h"
#include "edit/note_changes.h"

namespace lore {

/// How the changes of the category trees came to the disk.
struct SavedCategories {
    bool saved = false;  ///< false if the categories could not be written, which was told; then nothing has changed
    ChangedNotes notes;  ///< those whose paths were rewritten, and those that keep their categories
};

/// Puts a changed forest in the place of the NoteBook's, and rewrites the paths of every note that lies in or below a
/// category that was renamed, moved, merged, deleted, assigned or unassigned, each file in one pass. Dates of the notes
/// don't move.
///
/// The categories are written first, together with those that go, then the notes, then the categories without them: at
/// each moment the file of categories holds every id that a note stores. Where notes can't be written, the categories
/// that they are filed in stay. The notes of `list`, the current one, follow.
SavedCategories SaveCategoryTrees(EditWorld& world, const CProCategoryList& edited, CNoteList* list = nullptr);

/// Gives a note, in each set, the path that leads to where the forest holds it. Sets that hold it nowhere stay. For
/// many notes of one forest.
class PathRewriter {
public:
    /// The forest outlives the rewriter and stays as it is.
    explicit PathRewriter(const CProCategoryList& forest);
    void Rewrite(CNote& note) const;
    /// The id of the note's category in a set, -1 where the forest doesn't hold it.
    int32_t PlaceOf(int32_t note, int set) const;

private:
    std::array<std::unordered_map<int32_t, const CProCategoryTree*>, kSetCount> places_;
};

}  // namespace lore
