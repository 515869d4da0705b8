#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "exchange/archive_result.h"
#include "exchange/export_notes.h"

namespace lore {

/// Reads an archive that was just made and compares it with what it was made from: the record file byte by byte, and
/// each attachment file that is there with the one in the NoteBook. `count` is the number of notes that were written.
/// `lacking` gets the attachment files that the notes name and the archive lacks.
ArchiveResult CompareBackup(const std::filesystem::path& archive, const ExportedNotes& notes, size_t count,
                            const ExportJob& job, std::vector<std::string>& lacking);

}  // namespace lore
