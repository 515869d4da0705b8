#pragma once

#include <filesystem>
#include <string>

#include "base/file_descriptor.h"
#include "base/file_io.h"
#include "ports/fault_notice.h"

namespace lore {

/// Tells of a read that failed. A file that isn't there counts as having no records and is no failure.
inline void TellFailedRead(FaultNotice& faults, const char* what, const std::filesystem::path& path,
                           const FileResult& result) {
    const FileResult seen = LookedBehindLinks(path, result);
    if (!seen.Ok() && !seen.Missing())
        faults.Tell({what, PlaceOfFault(path, seen).string(), seen.Reason()});
}

/// Tells of a write that failed, for whatever reason, and that one that failed before has been done.
inline void TellFailedWrite(FaultNotice& faults, const char* what, const std::filesystem::path& path,
                            const FileResult& result) {
    if (result.Ok())
        faults.Mended(what, path.string());
    else
        faults.Tell({what, path.string(), result.Reason()});
}

/// What a note file that failed is called in such a message.
inline constexpr char kNoteFileUnread[] = "A note file could not be read";
inline constexpr char kNoteFileUnwritten[] = "A note file could not be written";
/// And the list of NoteBooks, and the folders of all data.
inline constexpr char kNoteBooksUnread[] = "The list of NoteBooks could not be read";
inline constexpr char kDataFolderUnmade[] = "The data folder could not be made";

}  // namespace lore
