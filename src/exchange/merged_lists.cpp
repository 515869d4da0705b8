#include "exchange/merged_lists.h"

#include "base/file_copy.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

struct MergedList {
    bool isNew, isWhole;
    const char* unwritten;
    std::filesystem::path path;
};

template <typename Save>
bool Written(const MergedList& list, FaultNotice& faults, Save save) {
    if (!list.isNew)
        return true;
    FileResult result;
    if (!list.isWhole) {
        std::filesystem::path kept;
        result = KeepCopy(list.path, kept);
    }
    if (result.Ok())
        result = save(list.path);
    TellFailedWrite(faults, list.unwritten, list.path, result);
    return result.Ok();
}

}  // namespace

bool WriteMergedLists(const OpenNoteBook& book, const SourceMerge& merge, bool newCategories, FaultNotice& faults) {
    using Path = const std::filesystem::path&;
    const NoteBookPaths& paths = book.paths;
    return Written(
               {merge.HasNewAuthors(), book.authors.ReadWhole(), "The authors could not be written", paths.Authors()},
               faults, [&](Path path) { return book.authors.SaveAuthors(path); }) &&
           Written({merge.HasNewTypes(), book.types.ReadWhole(), "The source types could not be written",
                    paths.SourceTypes()},
                   faults, [&](Path path) { return book.types.SaveTypes(path); }) &&
           Written(
               {merge.HasNewSources(), book.sources.ReadWhole(), "The sources could not be written", paths.Sources()},
               faults, [&](Path path) { return SourceList(book.sources).SaveSources(path, book.authors); }) &&
           Written({newCategories, true, "The categories could not be written", paths.Categories()}, faults,
                   [&](Path path) { return book.categories.Save(path); });
}

}  // namespace lore
