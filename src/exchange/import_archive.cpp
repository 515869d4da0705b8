#include "exchange/import_archive.h"

#include <numeric>

#include "base/text.h"
#include "notes/check_note.h"

namespace lore {

namespace {

/// The record file stands in memory, so that its size is held closer than that of an attachment.
constexpr uint64_t kAlwaysAllowed = uint64_t{32} << 20;
constexpr uint64_t kMostPerPackedByte = 100;

bool IsTooLarge(const ZipItem& item) {
    return item.size > kAlwaysAllowed && item.size / kMostPerPackedByte > item.packed;
}

}  // namespace

ArchiveResult ImportArchive::Open(const std::filesystem::path& path, FaultNotice& faults) {
    ArchiveResult result = zip_.Open(path);
    if (!result.Ok())
        return result;
    for (const std::string& line : zip_.LeftOut())
        faults.Tell({line, path.string(), "the rest of the archive is taken"});
    const ZipItem* const item = zip_.Find(kArchiveNotesName);
    if (!item)
        return ArchiveResult::Failure("it holds no notes; it isn't an export file of Lorebinder");
    if (IsTooLarge(*item))
        return ArchiveResult::Failure("its notes would unpack to more than a hundred times their size");
    return zip_.Read(*item, records_);
}

ImportArchive::Version ImportArchive::ReadNotes(const ReadContext& context, const std::function<void(int)>& count,
                                                const std::function<void()>& step) {
    ArchiveNoteReader reader(context);
    reader.OpenBytes(std::move(records_));
    if (reader.IsLaterVersion())
        return Version::Later;
    count(reader.Count());
    ArchiveNote entry;
    while (reader.Next(entry)) {
        for (CProCategoryTree& path : entry.note.categories) {
            if (IsUnassignedPath(path))
                path = {};
        }
        notes.push_back(std::move(entry));
        step();
    }
    sourcesNote = reader.SourcesNote();
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
