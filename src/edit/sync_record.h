#pragma once

#include <optional>

#include "notes/note.h"
#include "notes/sync_log.h"

namespace lore {

/// The parts of a note that the sync log tells apart.
struct NoteDifferences {
    bool text = false, sources = false, keyWords = false, categories = false;
};

/// Sources differ by their ids in order or by the pairs of their information in order, categories by any of the three
/// paths. Attachments and colour have no part in it.
NoteDifferences DifferencesOf(const CNote& a, const CNote& b);

/// True if the lists aren't of one length, or name different things or show them differently.
bool AttachmentsDiffer(const std::vector<CAttachment>& a, const std::vector<CAttachment>& b);

/// A note as the editor saves it.
struct LoggedSave {
    const CNote& note;
    const CNote& original;
    bool isNew = false;
    bool syncTicked = false;
};

/// What becomes of the note's record in the log of a linked NoteBook; `found` is the one that it has, or null. Nothing
/// where the log stays as it is: the note has no record and isn't to be synced, or its record rests and goes on to.
std::optional<CSyncInfo> ChangedRecord(const CSyncInfo* found, const LoggedSave& save, const DateTime& nowUtc);

/// A record for a note that the log doesn't hold yet, all its parts changed now.
CSyncInfo NewSyncRecord(const CNote& note, const DateTime& nowUtc);
/// Logs a note that came from elsewhere, all its parts changed now. If its guid is known, it stays tied to the same
/// note online, and out of sync if the user has put it there.
void LogLanded(SyncLog& log, const CNote& note, const DateTime& nowUtc);

}  // namespace lore
