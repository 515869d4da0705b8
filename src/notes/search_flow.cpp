#include "notes/search_flow.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <unordered_set>
#include <utility>

#include "base/text.h"
#include "notes/note_list_add.h"
#include "notes/search_database.h"
#include "notes/search_filter.h"
#include "notes/sort_order.h"

namespace lore {

namespace {

constexpr char kSearching[] = "Searching Notes....";
constexpr char kFinished[] = "Finished Search!";

std::string CountText(size_t results) {
    return "Your search returned  *" + std::to_string(results) + "*  results.";
}

std::vector<CNoteIDsPath> FilesByName(const NoteIndex& index) {
    std::vector<CNoteIDsPath> files = index.Entries();
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return files;
}

/// The matching notes of those files that the cache doesn't hold.
std::unordered_set<int32_t> FindOnDisk(const std::vector<CNoteIDsPath>& files, const TextCache& cache,
                                       const NoteMatcher& matcher, const ReadContext& context, FaultNotice& faults,
                                       const std::stop_token& stop) {
    std::vector<std::filesystem::path> paths;
    for (const CNoteIDsPath& file : files) {
        if (!cache.HoldsFile(file.path))
            paths.emplace_back(file.path);
    }
    SearchOptions options;
    options.hits = false;
    options.stop = stop;
    std::unordered_set<int32_t> ids;
    for (const SearchResult& result : SearchFiles(paths, matcher, options, context, faults))
        ids.insert(result.id);
    return ids;
}

}  // namespace

std::vector<int32_t> FindInNoteBook(const OpenNoteBook& book, const TextCache& cache, const NoteSearch& search,
                                    const ReadContext& context, FaultNotice& faults, const std::stop_token& stop) {
    if (search.searchTerms.empty())
        return {};
    const std::vector<CNoteIDsPath> files = FilesByName(book.index);
    const NoteMatcher matcher(search);
    std::unordered_set<int32_t> onDisk;
    if (!search.IsShowAll())
        onDisk = FindOnDisk(files, cache, matcher, context, faults, stop);
    std::vector<int32_t> results;
    for (const CNoteIDsPath& file : files) {
        if (stop.stop_requested())
            break;
        const auto held = search.IsShowAll() ? std::nullopt : cache.SearchFile(file.path, matcher);
        // A file may hold an old copy of a note that stands elsewhere now.
        if (held)
            std::copy_if(held->begin(), held->end(), std::back_inserter(results), [&](int32_t id) {
                const std::string* const path = book.index.FindPath(id);
                return path && *path == file.path;
            });
        else
            std::copy_if(file.ids.begin(), file.ids.end(), std::back_inserter(results),
                         [&](int32_t id) { return search.IsShowAll() || onDisk.contains(id); });
    }
    return results;
}

SearchOutcome SearchBox::Run(std::string_view text, SearchScope scope, int32_t noteSortID) {
    text = Trim(text);
    if (text.empty())
        return SearchOutcome::Empty;
    parts_.list.Select(-1);
    parts_.list.ClearNewFlags();
    parts_.list.ClearMarks();
    NoteSearch search;
    if (!ParseSearchString(text, &parts_.prompts, search))
        return SearchOutcome::Invalid;
    parts_.progress.ShowStandBy(kSearching);
    Next next;
    next.list = parts_.list;
    const bool done = RunBeside(parts_.background, kSearching, [&](const std::stop_token& stop) {
        if (scope == SearchScope::Database)
            SearchDatabase(search, noteSortID, stop, next);
        else
            SearchCurrentNotes(search, next);
        next.list.SortNotes(noteSortID);
    });
    next.faults.TellAll(parts_.faults);
    if (done)
        parts_.list = std::move(next.list);
    // Notes that are shown take their flag on the thread that shows them.
    for (size_t i = 0; done && scope == SearchScope::CurrentNotes && i < next.results.size(); ++i)
        parts_.list.MarkAsNew(static_cast<size_t>(parts_.list.PositionOf(next.results[i])));
    parts_.progress.HideStandBy();
    if (!done)
        return SearchOutcome::Cancelled;
    if (parts_.listChanged)
        parts_.listChanged();
    parts_.prompts.Message(CountText(next.results.size()), kFinished, PromptIcon::Information);
    return SearchOutcome::Done;
}

void SearchBox::SearchDatabase(const NoteSearch& search, int32_t noteSortID, const std::stop_token& stop,
                               Next& next) const {
    CNoteList& list = next.list;
    next.results = FindInNoteBook(parts_.book, parts_.cache, search, parts_.context, next.faults, stop);
    const auto marks = search.IsShowAll() ? nullptr : std::make_shared<const NoteMatcher>(search);
    LongList others;
    for (const int32_t id : next.results) {
        if (const int position = list.PositionOf(id); position >= 0)
            list.SetMarks(static_cast<size_t>(position), marks);
        else
            others.AddTail(id);
    }
    CNoteList found = LoadListedNotes(parts_.book, others, parts_.context, next.faults, stop);
    for (size_t i = 0; i < found.Count(); ++i) {
        found.SetMarks(i, marks);
        found.MarkAsNew(i);
    }
    if (noteSortID == kAddToTop)
        AddNotes(list, std::move(found), kAddToTop);
    else
        found.AddNotesNotInList(list);
}

void SearchBox::SearchCurrentNotes(const NoteSearch& search, Next& next) const {
    CNoteList found;
    found.Assign(next.list);
    found.search = search;
    FilterList(found, parts_.cache);
    for (const ListedNote& note : found.Notes()) {
        next.list.SetMarks(static_cast<size_t>(next.list.PositionOf(note.Id())), note.pendingMarks);
        next.results.push_back(note.Id());
    }
}

}  // namespace lore
