#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/date_time.h"
#include "base/file_io.h"

namespace lore {

/// What happened to one note since the last sync. All dates are Coordinated Universal Time.
struct CSyncInfo {
    int32_t NoteId = -1;
    int32_t SyncState = -1;  ///< kStoredTrue when the record was made from a local note
    int32_t OnlineNoteId = -1;
    bool Changed = true;  ///< the note has changes to send
    std::string NoteKey;
    std::string NoteFile;  ///< must hold no comma, the reader would split it
    DateTime Change1, Change2, SourcesChanged, KeyWordsChanged, CategoriesChanged;
};

/// How a NoteBook is tied to one of the online account.
struct SyncLink {
    int32_t Linked = -1;  ///< kStoredTrue if linked
    int32_t OnlineNoteBookID = -1;
    std::string OnlineName;
    std::string DesktopName;
    DateTime LastSync;
    std::string NoteBookGuid;

    bool IsLinked() const;
};

/// The link of a NoteBook and the log of its notes.
class SyncLog {
public:
    SyncLink link;

    const std::vector<CSyncInfo>& Records() const { return records_; }
    /// Appends a record as it is.
    void Add(CSyncInfo info);
    /// The first record with this NoteKey, or nothing. To change it, copy it and call ReplaceSyncInfo.
    const CSyncInfo* FindSyncInfo(std::string_view key) const;
    /// Replaces the record of the same NoteKey, or adds it.
    void ReplaceSyncInfo(const CSyncInfo& info);
    /// Gives the link its defaults and empties the log.
    void ResetLink();

    /// False if the file that was read is there and holds what isn't in the log: it could not be read, breaks off or
    /// has a byte that cuts it.
    bool ReadWhole() const { return isWhole_; }
    /// Sets it; what the file held is kept beside by now.
    void MarkWhole(bool isWhole = true) { isWhole_ = isWhole; }

private:
    bool isWhole_ = true;
    std::vector<CSyncInfo> records_;
    std::unordered_map<std::string, size_t> byKey_;
};

/// Empties the log and reads a file. A missing file leaves it empty; `hasHead`, if given, tells whether a first line
/// stood there. Fields that are missing keep their defaults, dates that can't be read are null.
FileResult LoadSyncLogFrom(const std::filesystem::path& path, SyncLog& log, bool* hasHead = nullptr);
/// Rewrites the file. Commas and line breaks in the two names become blanks.
FileResult SaveSyncLogTo(const std::filesystem::path& path, const SyncLog& log);

/// The dates of the log as text, "07/12/2011 02:20:24 PM", and back; null for any other text.
std::string SyncDateText(const DateTime& date);
DateTime ParseSyncDate(std::string_view text);

}  // namespace lore
