#include "exchange/bring_back.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "classify/category_edit.h"
#include "classify/category_merge.h"
#include "exchange/archive_notes.h"
#include "exchange/merged_lists.h"
#include "exchange/source_merge.h"

namespace lore {

namespace {

void MapSources(std::vector<CNote>& notes, std::vector<CSource> sources, SourceMerge& merge) {
    std::unordered_set<int32_t> named;
    for (const CNote& note : notes)
        named.insert(note.sources.begin(), note.sources.end());
    std::erase_if(sources, [&](const CSource& source) { return !named.contains(source.SourceID); });
    merge.AddTypes(sources);
    if (merge.HasNewTypes())
        merge.NumberTypes();
    std::unordered_map<int32_t, int32_t> present;
    for (const CSource& source : sources)
        present.emplace(source.SourceID, merge.Merge(source));
    for (CNote& note : notes) {
        for (size_t i = 0; i < note.sources.Count(); ++i) {
            const auto found = present.find(note.sources[i]);
            if (found != present.end() && found->second != note.sources[i])
                note.sources.SetAt(i, found->second);
        }
    }
}

/// True if the forest has got more categories.
bool MapCategories(std::vector<CNote>& notes, CProCategoryList& forest, int& maxCategoryID) {
    std::vector<std::pair<CProCategoryTree*, int>> vanished;
    for (CNote& note : notes) {
        for (int set = 1; set <= kSetCount; ++set) {
            CProCategoryTree& path = note.categories[static_cast<size_t>(set - 1)];
            if (path.IsEmptyPath() || path.name.empty() || IsUnassignedPath(path))
                continue;
            const CProCategoryTree* const node = std::as_const(forest).FindByID(DeepestCategoryID(path));
            if (!node)
                vanished.emplace_back(&path, set);
            else if (const CProCategoryTree now = PathTo(*node); !path.IsSameTree(now))
                path = now;
        }
    }
    if (vanished.empty())
        return false;
    CategoryMerger merger(forest, maxCategoryID);
    for (const auto& [path, set] : vanished)
        merger.MergePath(-1, *path, set);
    return merger.HasAdded();
}

}  // namespace

std::vector<CSource> SourcesOfNotes(const std::vector<CNote>& notes, const OpenNoteBook& book) {
    std::vector<CSource> sources;
    std::unordered_set<int32_t> met;
    for (const CNote& note : notes) {
        for (const int32_t id : note.sources) {
            const CSource* const source = met.insert(id).second ? book.sources.FindSourceByID(id) : nullptr;
            if (!source)
                continue;
            sources.push_back(*source);
            EmbedAuthors(sources.back(), book.authors);
        }
    }
    return sources;
}

bool BringBackWhatNotesName(std::vector<CNote>& notes, const std::vector<CSource>& sources, OpenNoteBook& book,
                            IdCounters& counters, FaultNotice& faults) {
    SourceMerge merge(book, counters);
    MapSources(notes, sources, merge);
    const bool newCategories = MapCategories(notes, book.categories, counters.MaxCategoryID);
    return WriteMergedLists(book, merge, newCategories, faults);
}

}  // namespace lore
