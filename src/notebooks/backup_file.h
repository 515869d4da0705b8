#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "exchange/archive_result.h"
#include "exchange/export_notes.h"
#include "ports/fault_notice.h"

namespace lore {

/// The file of one NoteBook in a backup of all: "[Thesis]_(07-12-11)" goes in before the last point of the path's last
/// component, from a name without its blanks and with "_" for "/". A component without a point stays as it is. A
/// folder's name, for NoteBooks whose names give one file, follows the name: "[Thesis DB000008]", at the end if there
/// is no point.
std::string BackupFileName(std::string_view path, std::string_view noteBookName, std::string_view dateText,
                           std::string_view folder = {});

/// True if a file can be written at a path. A link leads on to what it names. What stands there keeps its bytes; a file
/// that the test made, or an empty one, goes again. A device or a pipe is no place for a file.
bool IsWritablePath(const std::filesystem::path& path);

/// Backs a NoteBook up: the archive is made beside its place, read back and compared with the NoteBook, each note's
/// record and each attachment's bytes, before it takes the place of what stands there. What stands there is kept
/// beside, as "NAME.kept", if the NoteBook could not be read whole: `isShort`, which the load sets, or the notes while
/// they are walked. It is set here if the backup lacks an attachment file that a note names, and that stands in the
/// one in its place or in `earlier`, the one of last time elsewhere. Gives the number of notes, 0 for none or after a
/// cancel, -1 after a failure, which is told; then the place is as it was.
int WriteBackup(const ExportedNotes& notes, const std::filesystem::path& place, const std::filesystem::path& earlier,
                const ExportWorld& world, bool& isShort);

/// True for an export archive. A list that came from elsewhere may name any file as the backup of last time.
bool IsExportArchive(const std::filesystem::path& path);

}  // namespace lore
