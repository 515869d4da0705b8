#include "exchange/import_archive.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string>
#include <system_error>
#include <unordered_map>

#include "base/text.h"
#include "bibliography/author_list.h"
#include "bibliography/source_limits.h"
#include "bibliography/source_record.h"
#include "classify/category_list.h"
#include "exchange/packing_limits.h"
#include "notes/attachment_path.h"
#include "notes/check_note.h"

namespace lore {

namespace {

/// Size of a record file that isn't large yet.
constexpr uint64_t kAlwaysAllowed = uint64_t{32} << 20;
/// What stays free on the disk beside unpacked files, for the notes and lists.
constexpr uint64_t kRoomToLeave = uint64_t{16} << 20;
/// A source that many plain notes name is copied for each, but not without end: so often the size of the record file,
/// beside what is always allowed.
constexpr uint64_t kMostCopies = 8;

bool IsTooLarge(const ZipItem& item) {
    return item.size > kAlwaysAllowed && item.size / kMostOfRecordsRead > item.packed;
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
    /// For a cleaned note: true if it can't be stored all the same.
    bool IsRefused(const CNote& note) {
        std::string first;
        TellLongTexts(note, {note.plainText, note.rtfText}, [&](const std::string& text) {
            if (first.empty())
                first = text;
        });
        if (!first.empty())
            Tell("Note " + std::to_string(note.id) + " was left out: it has a " + first);
        return !first.empty();
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

/// About how much memory a copy of a source takes.
uint64_t SizeOf(const CSource& source) {
    RecordWriter stream;
    WriteSource(&stream, source);
    WriteAuthorRecords(&stream, source.EmbeddedAuthors);
    return sizeof source + source.FormattedText.size() + stream.Logical().size();
}

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

bool HasRoom(const std::filesystem::path& folder, uint64_t bytes) {
    std::error_code error;
    const std::filesystem::space_info space = std::filesystem::space(folder, error);
    return error || (space.available >= kRoomToLeave && bytes <= space.available - kRoomToLeave);
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
    recordsSize_ = records_.size();
    reader.OpenBytes(std::move(records_));
    if (reader.IsLaterVersion())
        return Version::Later;
    count(reader.Count());
    ArchiveNote entry;
    while (reader.Next(entry) && reader.IsNoteWhole()) {
        notes.push_back(std::move(entry));
        step();
    }
    sourcesNote = reader.SourcesNote();
    if (!reader.IsWhole())
        TakePlainOrTell(reader, faults);
    ClearUnassignedPaths();
    LeaveOutLongTexts(faults);
    return Version::Known;
}

/// What isn't whole may be of plain records, which are read otherwise.
void ImportArchive::TakePlainOrTell(ArchiveNoteReader& reader, FaultNotice& faults) {
    const std::string damage = std::string("it ") + reader.DamageText();
    const bool holdsMore = reader.HoldsMore();
    if (std::optional<PlainArchive> plain = reader.ReadPlain()) {
        notes = std::move(plain->notes);
        sourcesNote = std::move(plain->sourcesNote);
        isPlain_ = true;
        return;
    }
    const std::string announced = std::to_string(std::max(reader.CountOfNotes(), 0)) + " notes";
    faults.Tell({holdsMore ? "The archive announces " + announced + "; what stands after them was not taken"
                           : std::to_string(notes.size()) + " of " + announced + " of the archive could be read",
                 path_.string(), damage});
}

void ImportArchive::ClearUnassignedPaths() {
    for (ArchiveNote& read : notes) {
        for (CProCategoryTree& path : read.note.categories) {
            if (IsUnassignedPath(path))
                path = {};
        }
    }
}

void ImportArchive::LeaveOutLongTexts(FaultNotice& faults) {
    LongTextRemover remover(path_, faults);
    if (sourcesNote)
        remover.Clean(*sourcesNote);
    if (isPlain_)
        GiveSources(faults);
    for (ArchiveNote& read : notes)
        remover.Clean(read);
    std::erase_if(notes, [&](const ArchiveNote& read) { return remover.IsRefused(read.note); });
}

void ImportArchive::GiveSources(FaultNotice& faults) {
    struct Known {
        const CSource* source;
        uint64_t size;
    };
    std::unordered_map<int32_t, Known> known;
    if (sourcesNote) {
        for (const CSource& source : sourcesNote->sources)
            known.emplace(source.SourceID, Known{&source, SizeOf(source)});
    }
    uint64_t room = kAlwaysAllowed + kMostCopies * recordsSize_;
    size_t poorer = 0;
    bool isFull = false;
    for (ArchiveNote& entry : notes) {
        LongList named;
        named.Merge(entry.note.sources);
        entry.note.sources.RemoveAll();
        for (const int32_t id : named) {
            const auto found = known.find(id);
            if (found == known.end() || found->second.size > room) {
                isFull = isFull || found != known.end();
                continue;
            }
            room -= found->second.size;
            entry.note.sources.AddTail(id);
            entry.sources.push_back(*found->second.source);
        }
        poorer += entry.sources.size() < named.Count() ? 1 : 0;
    }
    if (poorer > 0)
        faults.Tell(
            {std::to_string(poorer) + " notes of the archive come without sources that they name", path_.string(),
             isFull ? "it doesn't hold these, or they are too large to come with each note" : "it doesn't hold these"});
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
