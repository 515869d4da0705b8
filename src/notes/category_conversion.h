#pragma once

#include <memory>

#include "classify/category_list.h"
#include "classify/category_merge.h"
#include "notes/note.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// True if a NoteBook has no "Categories.dat", so that its forest has to be built from its notes. A file that is there
/// is never built anew, even if it can't be read.
bool NeedsCategoryConversion(const NoteBookPaths& paths);

/// Builds a forest from the paths of notes and the older files of empty categories.
class CategoryConversion {
public:
    /// `maxCategoryID` is the stored counter; it moves on with the ids that are given out.
    explicit CategoryConversion(int& maxCategoryID);
    /// For a note that keeps the ids of its paths on the disk: no category may get them. Before the first MergeNote.
    void MarkKept(const CNote& note);
    /// Brings the three paths of a note into the forest and gives them its ids.
    void MergeNote(CNote& note);
    /// Brings in the categories without notes of the three older files.
    void MergeEmptyCategories(const NoteBookPaths& paths, FaultNotice& faults);
    /// The forest; the conversion is over.
    CProCategoryList Finish();

private:
    CProCategoryList forest_;
    std::unique_ptr<CategoryMerger> merger_;
};

/// Converts a NoteBook on disk: each note file is written in the current form with the ids of the new forest, then
/// "Categories.dat" is written. A note file that is damaged or can't be read stays as it is and is reported. False if
/// something could not be written, which is reported too.
bool ConvertCategories(const NoteBookPaths& paths, int& maxCategoryID, const ReadContext& context, FaultNotice& faults);

}  // namespace lore
