#include "notes/search_database.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <utility>

#include "notes/note_copies.h"
#include "notes/note_file.h"
#include "notes/search_prefilter.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

/// What one file held.
struct FileFinds {
    FileResult read;
    std::vector<NoteCopy> copies;  // of all its notes
    struct Find {
        size_t copy;
        SearchResult result;
    };
    std::vector<Find> finds;
};

class FileSearcher {
public:
    FileSearcher(const NoteMatcher& matcher, const SearchOptions& options, const ReadContext& context)
        : matcher_(matcher), prefilter_(matcher), options_(options), reader_(context) {}

    void Search(const std::filesystem::path& path, FileFinds& found) {
        found.read = reader_.Open(path);
        const std::string name = path.filename().string();
        while (reader_.Next()) {
            const CNote& head = reader_.Head();
            if (Matches(reader_.RtfText()))
                found.finds.push_back({found.copies.size(), Result(head.id, reader_.RtfText())});
            found.copies.push_back({head.id, GetNoteFileName(head) == name, reader_.IsNoteWhole()});
        }
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
};

/// The finds of the copies that show, in reading order.
std::vector<SearchResult> TakeShown(std::vector<FileFinds>& files) {
    std::vector<NoteCopy> copies;
    for (const FileFinds& file : files)
        copies.insert(copies.end(), file.copies.begin(), file.copies.end());
    const std::vector<bool> shown = ShownCopies(copies);
    std::vector<SearchResult> results;
    size_t before = 0;
    for (FileFinds& file : files) {
        for (FileFinds::Find& find : file.finds) {
            if (shown[before + find.copy])
                results.push_back(std::move(find.result));
        }
        before += file.copies.size();
    }
    return results;
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
    if (matcher.Terms().empty())
        return {};
    std::vector<FileFinds> found(files.size());
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        FileSearcher searcher(matcher, options, context);
        for (size_t i = next++; i < files.size() && !options.stop.stop_requested(); i = next++)
            searcher.Search(files[i], found[i]);
    };
    {
        const size_t helpers = std::min(files.size(), static_cast<size_t>(std::max(options.threads, 1))) - 1;
        std::vector<std::jthread> threads;
        for (size_t i = 0; !files.empty() && i < helpers; ++i)
            threads.emplace_back(work);
        work();
    }
    for (size_t i = 0; i < files.size(); ++i) {
        if (!found[i].read.Ok() && !found[i].read.Missing())
            faults.Tell({"The note file could not be searched", files[i].string(), found[i].read.Reason()});
    }
    return TakeShown(found);
}

std::vector<SearchResult> SearchDatabase(const std::filesystem::path& notesFolder, const NoteMatcher& matcher,
                                         const SearchOptions& options, const ReadContext& context,
                                         FaultNotice& faults) {
    std::vector<std::filesystem::path> files;
    for (const std::string& name : ListDatFiles(notesFolder))
        files.push_back(notesFolder / name);
    return SearchFiles(files, matcher, options, context, faults);
}

}  // namespace lore
