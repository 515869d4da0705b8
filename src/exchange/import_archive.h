#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exchange/archive_notes.h"
#include "exchange/zip_reader.h"
#include "ports/fault_notice.h"

namespace lore {

/// An archive that is being imported: its notes in memory, its attachment files still packed.
class ImportArchive {
public:
    /// Opens the archive and unpacks the record file of the notes. Entries that were left out are told.
    ArchiveResult Open(const std::filesystem::path& path, FaultNotice& faults);

    enum class Version { Known, Later };
    /// Reads what the record file holds; `count` is told how many records it promises, `step` is called for each.
    Version ReadNotes(const ReadContext& context, const std::function<void(int)>& count,
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

private:
    ZipReader zip_;
    std::string records_;
};

}  // namespace lore
