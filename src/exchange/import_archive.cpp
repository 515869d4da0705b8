#include "exchange/import_archive.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string>

#include "base/text.h"
#include "bibliography/source_limits.h"
#include "classify/category_list.h"
#include "notes/attachment_path.h"
#include "notes/check_finding.h"

namespace lore {

namespace {

/// The record file stands in memory. A large one is held closer than an attachment, which is never whole in memory.
constexpr uint64_t kAlwaysAllowed = uint64_t{32} << 20;
constexpr uint64_t kMostPerPackedByte = 100;

bool IsTooLarge(const ZipItem& item) {
    return item.size > kAlwaysAllowed && item.size / kMostPerPackedByte > item.packed;
}

/// Leaves texts of entries out that no record file can hold.
class LongTextRemover {
public:
    LongTextRemover(const std::filesystem::path& path, FaultNotice& faults) : path_(path), faults_(faults) {}

    void Clean(ArchiveNote& entry) {
        const size_t before = entry.sources.size();
        std::erase_if(entry.sources, [this](const CSource& source) { return IsRefused(source); });
        if (entry.sources.size() != before) {
            entry.note.sources.RemoveAll();
            for (const CSource& source : entry.sources)
                entry.note.sources.AddTail(source.SourceID);
        }
        std::erase_if(entry.note.sourceInfo, [&](const CNoteSourceInfo& info) { return IsRefused(info, entry.note); });
    }

private:
    bool IsRefused(const CSource& source) {
        const std::optional<LongText> longText = FindLongText(source);
        if (!longText)
            return false;
        // A source stands with each of its notes.
        if (told_.insert(source.SourceGUID).second)
            Tell("The source " + std::to_string(source.SourceID) + " was left out: its field " + longText->field +
                 " holds a text" + OverLimit(longText->bytes));
        return true;
    }
    bool IsRefused(const CNoteSourceInfo& info, const CNote& note) {
        const std::string over = OverLimit(std::max(info.key.size(), info.text.size()));
        if (!over.empty())
            Tell("What note " + std::to_string(note.id) + " says of one of its sources was left out: it holds a text" +
                 over);
        return !over.empty();
    }
    void Tell(const std::string& what) { faults_.Tell({what, path_.string(), "the rest of the archive is taken"}); }

    const std::filesystem::path& path_;
    FaultNotice& faults_;
    std::set<std::string> told_;
};

}  // namespace

ArchiveResult FindRecordFile(const ZipReader& zip, const ZipItem*& records) {
    records = nullptr;
    const ZipItem* const item = zip.Find(kArchiveNotesName);
    if (!item)
        return ArchiveResult::Failure("it holds no notes; it isn't an export file of Lorebinder");
    if (IsTooLarge(*item))
        return ArchiveResult::Failure("its notes would unpack to more than a hundred times their size");
    records = item;
    return {};
}

ArchiveResult ImportArchive::Open(const std::filesystem::path& path, FaultNotice& faults) {
    path_ = path;
    ArchiveResult result = zip_.Open(path);
    if (!result.Ok())
        return result;
    for (const std::string& line : zip_.LeftOut())
        faults.Tell({line, path.string(), "the rest of the archive is taken"});
    const ZipItem* records = nullptr;
    result = FindRecordFile(zip_, records);
    return result.Ok() ? zip_.Read(*records, records_) : result;
}

ImportArchive::Version ImportArchive::ReadNotes(const ReadContext& context, FaultNotice& faults,
                                                const std::function<void(int)>& count,
                                                const std::function<void()>& step) {
    ArchiveNoteReader reader(context);
    reader.OpenBytes(std::move(records_));
    if (reader.IsLaterVersion())
        return Version::Later;
    count(reader.Count());
    ArchiveNote entry;
    while (reader.Next(entry) && reader.IsNoteWhole()) {
        for (CProCategoryTree& path : entry.note.categories) {
            if (IsUnassignedPath(path))
                path = {};
        }
        notes.push_back(std::move(entry));
        step();
    }
    if (!reader.IsWhole())
        faults.Tell({std::to_string(notes.size()) + " of " + std::to_string(std::max(reader.CountOfNotes(), 0)) +
                         " notes of the archive could be read",
                     path_.string(), reader.HoldsMore() ? "it holds more than it announces" : "it breaks off"});
    sourcesNote = reader.SourcesNote();
    LongTextRemover remover(path_, faults);
    for (ArchiveNote& read : notes)
        remover.Clean(read);
    if (sourcesNote)
        remover.Clean(*sourcesNote);
    return Version::Known;
}

uint64_t ImportArchive::SizeOfFiles() const {
    return std::accumulate(zip_.Items().begin(), zip_.Items().end(), uint64_t{0},
                           [](uint64_t sum, const ZipItem& item) { return sum + item.size; });
}

const ZipItem* ImportArchive::FileOf(const CAttachment& attachment) const {
    const std::string name = StoredName(attachment);
    return name.empty() ? nullptr : zip_.Find(ToUtf8(name));
}

}  // namespace lore
