#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exchange/archive_notes.h"
#include "exchange/zip_reader.h"
#include "ports/fault_notice.h"

namespace lore {

/// Finds the record file of an archive that was opened. Fails, and gives null, if it isn't there or would take too much
/// memory: then the archive can't be imported.
ArchiveResult FindRecordFile(const ZipReader& zip, const ZipItem*& records);

/// False if so many more bytes in a folder would leave next to nothing of its disk free. True if nobody can say.
bool HasRoom(const std::filesystem::path& folder, uint64_t bytes);

/// An archive that is being imported: its notes in memory, its attachment files still packed.
class ImportArchive {
public:
    /// Opens the archive and unpacks the record file of the notes. Entries that were left out are told.
    ArchiveResult Open(const std::filesystem::path& path, FaultNotice& faults);

    enum class Version { Known, Later };
    /// Reads what the record file holds; `count` is told how many records it promises, `step` is called for each. If it
    /// breaks off or holds more than it promises, that is told; a note within which it breaks off is left out. So are
    /// notes, sources, and what notes know of theirs, with a text over the limit of a record; each is told once. Notes
    /// of plain records get the sources that the sources note brings; that others are missing is told.
    Version ReadNotes(const ReadContext& context, FaultNotice& faults, const std::function<void(int)>& count,
                      const std::function<void()>& step);

    std::vector<ArchiveNote> notes;
    std::optional<ArchiveNote> sourcesNote;

    /// The packed file of an attachment; null for a web link, and if the archive lacks it.
    const ZipItem* FileOf(const CAttachment& attachment) const;
    /// What all files of the archive would take together, as announced.
    uint64_t SizeOfFiles() const;
    /// Unpacks it to a path where nothing stands yet.
    ArchiveResult Extract(const ZipItem& item, const std::filesystem::path& target) {
        return zip_.Extract(item, target);
    }
    /// The same over what stands there, under a temporary name first; the folder isn't flushed.
    ArchiveResult ExtractAtomically(const ZipItem& item, const std::filesystem::path& target) {
        return zip_.ExtractAtomically(item, target);
    }

private:
    void TakePlainOrTell(ArchiveNoteReader& reader, FaultNotice& faults);
    void ClearUnassignedPaths();
    void GiveSources(FaultNotice& faults);
    void LeaveOutLongTexts(FaultNotice& faults);

    std::filesystem::path path_;
    ZipReader zip_;
    std::string records_;
    uint64_t recordsSize_ = 0;
    bool isPlain_ = false;
};

}  // namespace lore
