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

// What is told of a failure that more than one place meets. FaultNotice::Mended finds a write by these words.

inline constexpr char kNoteFileUnread[] = "A note file could not be read";
inline constexpr char kNoteFileUnwritten[] = "A note file could not be written";
inline constexpr char kNotesFolderUnread[] = "The folder of the notes could not be read";
inline constexpr char kNotesNotImported[] = "The notes could not be imported";
inline constexpr char kNoteBooksUnread[] = "The list of NoteBooks could not be read";
inline constexpr char kNoteBookFoldersUnmade[] = "The folders of the NoteBook could not be made";
inline constexpr char kDataFolderUnmade[] = "The data folder could not be made";
inline constexpr char kLastListUnread[] = "The last note list could not be read";
inline constexpr char kAuthorsUnread[] = "The authors could not be read";
inline constexpr char kSourceTypesUnread[] = "The source types could not be read";
inline constexpr char kSourcesUnread[] = "The sources could not be read";
inline constexpr char kCategoriesUnread[] = "The categories could not be read";
inline constexpr char kSyncLogUnread[] = "The sync log could not be read";
inline constexpr char kSyncLogUnwritten[] = "The sync log could not be written";
inline constexpr char kEventsUnread[] = "The events could not be read";
inline constexpr char kRemindersUnread[] = "The reminders could not be read";
inline constexpr char kSettingsUnread[] = "The settings could not be read";
inline constexpr char kFileUnread[] = "The file could not be read";

}  // namespace lore
