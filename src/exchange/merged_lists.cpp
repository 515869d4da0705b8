#include "exchange/merged_lists.h"

#include "base/free_ids.h"
#include "notes/file_faults.h"
#include "notes/notebook_lists.h"

namespace lore {

namespace {

bool WriteCategories(const OpenNoteBook& book, FaultNotice& faults) {
    const FileResult result = book.categories.Save(book.paths.Categories());
    TellFailedWrite(faults, "The categories could not be written", book.paths.Categories(), result);
    return result.Ok();
}

}  // namespace

bool WriteMergedLists(OpenNoteBook& book, const SourceMerge& merge, bool newCategories, FaultNotice& faults) {
    if (merge.RanOut()) {
        faults.Tell({"The sources could not be taken over", book.paths.Sources().string(), kNoFreeID});
        return false;
    }
    return (!merge.HasNewAuthors() || WriteAuthors(book, faults)) &&
           (!merge.HasNewTypes() || WriteSourceTypes(book, faults)) &&
           (!merge.HasNewSources() || WriteSources(book, faults)) && (!newCategories || WriteCategories(book, faults));
}

}  // namespace lore
