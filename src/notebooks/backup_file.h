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

/// A backup that was made, or not.
struct WrittenBackup {
    ArchiveOutcome outcome;
    bool isIncomplete = false;  ///< the backup of last time may hold what this one lacks
};

/// Backs a NoteBook up: the archive is made beside its place, read back and compared with the NoteBook, each note's
/// record and each attachment's bytes, before it takes the place of what stands there. What stands there is kept
/// beside, as "NAME.kept", if the backup is incomplete: the NoteBook could not be read whole, which `heard` tells once
/// the notes have been walked, or an attachment file is missing that a note names, and that stands in the archive in
/// its place or in `earlier`, the one of last time elsewhere. Unless it is done, the place is as it was.
/// @param heard  what was told while the NoteBook was loaded, and is while its notes are walked
WrittenBackup WriteBackup(const ExportedNotes& notes, const std::filesystem::path& place,
                          const std::filesystem::path& earlier, const ExportJob& job, const HeardFaults& heard);

/// True for an export archive. A list that came from elsewhere may name any file as the backup of last time.
bool IsExportArchive(const std::filesystem::path& path);

}  // namespace lore
