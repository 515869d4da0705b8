#include "notes/search_database.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "base/dat_files.h"
#include "base/helper_threads.h"
#include "base/id_marks.h"
#include "notes/file_faults.h"
#include "notes/note_copies.h"
#include "notes/note_file.h"
#include "notes/search_prefilter.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

/// What one file held. Of a copy that is whole and at home, as nearly all are, only the id and the
/// time of its last change are kept.
struct FileFinds {
    FileResult read;
    std::vector<int32_t> ids;  // of all its notes
    std::vector<int64_t> edited;
    struct Stray {
        size_t copy;
        bool isHome, isWhole;
    };
    std::vector<Stray> strays;
    struct Find {
        size_t copy;
        SearchResult result;
    };
    std::vector<Find> finds;
};

class FileSearcher {
public:
    FileSearcher(const NoteMatcher& matcher, const SearchOptions& options, const ReadContext& context)
        : matcher_(matcher), prefilter_(matcher), options_(options), reader_(context, HeadParts::Place) {}

    void Search(const std::filesystem::path& path, FileFinds& found) {
        found.read = reader_.Open(path);
        const std::string name = path.filename().string();
        ids_.clear();
        edited_.clear();
        while (reader_.Next()) {
            const CNote& head = reader_.Head();
            if (Matches(reader_.RtfText()))
                found.finds.push_back({ids_.size(), Result(head.id, reader_.RtfText())});
            const bool isHome = GetNoteFileName(head) == name;
            if (!isHome || !reader_.IsNoteWhole())
                found.strays.push_back({ids_.size(), isHome, reader_.IsNoteWhole()});
            ids_.push_back(head.id);
            edited_.push_back(head.dateEdited.Seconds());
        }
        found.ids.assign(ids_.begin(), ids_.end());
        found.edited.assign(edited_.begin(), edited_.end());
    }

private:
    bool Matches(std::string_view rtf) {
        if (matcher_.Search().IsShowAll())
            return true;
        if (rtf.empty() || !prefilter_.MayMatch(rtf))
            return false;
        PlainText(rtf, text_);
        return matcher_.Matches(text_);
    }

    SearchResult Result(int32_t id, std::string_view rtf) const {
        return matcher_.Search().IsShowAll() ? SearchResult{id, {}, {}} : ResultFor(id, rtf, matcher_, options_);
    }

    const NoteMatcher& matcher_;
    const RtfPrefilter prefilter_;
    const SearchOptions& options_;
    NoteFileReader reader_;
    std::string text_;
    std::vector<int32_t> ids_;
    std::vector<int64_t> edited_;
};

/// All copies of the notes that were found, in reading order; null for a copy that doesn't match.
using Candidates = CopyChoice<SearchResult*>;

void AddCandidates(FileFinds& file, size_t number, const IDMarks& wanted, Candidates& candidates) {
    auto stray = file.strays.cbegin();
    auto find = file.finds.begin();
    for (size_t i = 0; i < file.ids.size(); ++i) {
        const bool isStray = stray != file.strays.cend() && stray->copy == i;
        const bool isFind = find != file.finds.end() && find->copy == i;
        if (wanted.Contains(file.ids[i]))
            candidates.Add({file.ids[i], !isStray || stray->isHome, !isStray || stray->isWhole, file.edited[i], number},
                           isFind ? &find->result : nullptr);
        stray += isStray ? 1 : 0;
        find += isFind ? 1 : 0;
    }
}

/// The finds of the copies that show, in reading order.
std::vector<SearchResult> TakeShown(std::vector<FileFinds>& files) {
    IDMarks wanted;
    for (const FileFinds& file : files) {
        for (const FileFinds::Find& find : file.finds)
            wanted.Add(find.result.id);
    }
    Candidates candidates;
    for (size_t i = 0; i < files.size(); ++i)
        AddCandidates(files[i], i, wanted, candidates);
    std::vector<SearchResult> results;
    candidates.TakeShown([&](int32_t, SearchResult* result) {
        if (result)
            results.push_back(std::move(*result));
    });
    return results;
}

/// Searches files that are given by names or paths; `pathOf` gives the path of one of them. One that isn't there is a
/// failure unless it `mayBeGone`.
template <typename Names, typename PathOf>
std::vector<SearchResult> Search(const Names& names, PathOf pathOf, const NoteMatcher& matcher,
                                 const SearchOptions& options, const ReadContext& context, FaultNotice& faults,
                                 bool mayBeGone) {
    if (matcher.Terms().empty())
        return {};
    std::vector<FileFinds> found(names.size());
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        FileSearcher searcher(matcher, options, context);
        for (size_t i = next++; i < names.size() && !options.stop.stop_requested(); i = next++)
            searcher.Search(pathOf(names[i]), found[i]);
    };
    if (!names.empty()) {
        const size_t threads = std::min(names.size(), static_cast<size_t>(std::max(options.threads, 1)));
        const std::vector<std::jthread> helpers = StartHelpers(threads - 1, work);
        work();
    }
    for (size_t i = 0; i < names.size(); ++i) {
        if (!found[i].read.Ok() && !(mayBeGone && found[i].read.Missing()))
            faults.Tell({"The note file could not be searched", pathOf(names[i]).string(), found[i].read.Reason()});
    }
    return TakeShown(found);
}

}  // namespace

SearchResult ResultFor(int32_t id, std::string_view rtfText, const NoteMatcher& matcher, const SearchOptions& options) {
    SearchResult result;
    result.id = id;
    if (!options.hits && !options.marked)
        return result;
    result.hits = matcher.Hits(PlainText(rtfText));
    if (options.marked && !result.hits.empty())
        result.displayRtf = MarkRtf(rtfText, result.hits);
    return result;
}

std::vector<SearchResult> SearchFiles(std::span<const std::filesystem::path> files, const NoteMatcher& matcher,
                                      const SearchOptions& options, const ReadContext& context, FaultNotice& faults) {
    const auto itself = [](const std::filesystem::path& path) -> const std::filesystem::path& { return path; };
    return Search(files, itself, matcher, options, context, faults, false);
}

// Names are kept, not paths: a path holds each of its parts once more.
std::vector<SearchResult> SearchDatabase(const std::filesystem::path& notesFolder, const NoteMatcher& matcher,
                                         const SearchOptions& options, const ReadContext& context,
                                         FaultNotice& faults) {
    const auto pathOf = [&notesFolder](const std::string& name) { return notesFolder / name; };
    std::vector<std::string> names;
    TellFailedRead(faults, kNotesFolderUnread, notesFolder, ReadDatFiles(notesFolder, names));
    return Search(names, pathOf, matcher, options, context, faults, true);
}

}  // namespace lore
