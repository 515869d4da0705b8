#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "exchange/archive_result.h"
#include "exchange/export_notes.h"

namespace lore {

/// The file of one NoteBook in a backup of all: "[Thesis]_(07-12-11)" goes in before the last point of the path's last
/// component, from a name without its blanks and with "_" for "/". A component without a point stays as it is.
std::string BackupFileName(std::string_view path, std::string_view noteBookName, std::string_view dateText);

/// True if a file can be written at a path. What stands there keeps its bytes; a file that the test made, or an empty
/// one, goes again.
bool IsWritablePath(const std::filesystem::path& path);

/// Backs a NoteBook up: the archive is made beside its place, read back and compared with the NoteBook, each note's
/// record and each attachment's bytes, before it takes the place of what stands there. What stands there is kept
/// beside, as "NAME.kept", if the NoteBook could not be read whole. Gives the number of notes, 0 for none or after a
/// cancel, -1 after a failure, which is told; then the place is as it was.
int WriteBackup(const ExportedNotes& notes, const std::filesystem::path& target, const ExportWorld& world);

/// True for an export archive. A list that came from elsewhere may name any file as the backup of last time.
bool IsExportArchive(const std::filesystem::path& path);

}  // namespace lore
