#include "exchange/merged_lists.h"

#include "base/free_ids.h"
#include "classify/category_list.h"
#include "notes/notebook_lists.h"

namespace lore {

void MapCategories(CNote& note, CategoryMerger& merger) {
    for (int set = 1; set <= kSetCount; ++set) {
        CProCategoryTree& path = note.categories[static_cast<size_t>(set - 1)];
        if (path.name.empty() || IsUnassignedPath(path))
            path = {};
        else
            merger.MergePath(-1, path, set);
    }
}

bool WriteMergedLists(OpenNoteBook& book, const SourceMerge& merge, bool newCategories, FaultNotice& faults) {
    if (merge.RanOut()) {
        faults.Tell({"The sources could not be taken over", book.paths.Sources().string(), kNoFreeID});
        return false;
    }
    return (!merge.HasNewAuthors() || WriteAuthors(book, faults)) &&
           (!merge.HasNewTypes() || WriteSourceTypes(book, faults)) &&
           (!merge.HasNewSources() || WriteSources(book, faults)) &&
           (!newCategories || WriteCategories(book, book.categories, faults));
}

}  // namespace lore
