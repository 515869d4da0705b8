#include "edit/sync_record.h"

#include <algorithm>

#include "base/record_file.h"
#include "notes/note_record.h"

namespace lore {

namespace {

void StampAll(CSyncInfo& info, const DateTime& nowUtc) {
    for (DateTime* const date :
         {&info.Change1, &info.Change2, &info.SourcesChanged, &info.KeyWordsChanged, &info.CategoriesChanged})
        *date = nowUtc;
}

void StampDifferences(CSyncInfo& info, const NoteDifferences& differences, const DateTime& nowUtc) {
    const std::pair<bool, DateTime*> parts[] = {{differences.text, &info.Change2},
                                                {differences.sources, &info.SourcesChanged},
                                                {differences.keyWords, &info.KeyWordsChanged},
                                                {differences.categories, &info.CategoriesChanged}};
    for (const auto& [differs, date] : parts) {
        if (differs)
            *date = nowUtc;
    }
}

}  // namespace

NoteDifferences DifferencesOf(const CNote& a, const CNote& b) {
    NoteDifferences differences;
    differences.text = a.rtfText != b.rtfText;
    differences.sources = a.sources != b.sources || a.sourceInfo != b.sourceInfo;
    differences.keyWords = a.keyWords != b.keyWords;
    for (size_t set = 0; set < kSetCount; ++set)
        differences.categories = differences.categories || !a.categories[set].IsSameTree(b.categories[set]);
    return differences;
}

bool AttachmentsDiffer(const std::vector<CAttachment>& a, const std::vector<CAttachment>& b) {
    return !std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const CAttachment& x, const CAttachment& y) {
        return x.title == y.title && x.storedFile == y.storedFile && x.sourceFile == y.sourceFile && x.show == y.show;
    });
}

CSyncInfo NewSyncRecord(const CNote& note, const DateTime& nowUtc) {
    CSyncInfo info;
    info.NoteKey = note.guid;
    info.NoteId = note.id;
    info.NoteFile = GetNoteFileName(note);
    info.SyncState = kStoredTrue;
    info.Changed = true;
    StampAll(info, nowUtc);
    return info;
}

void LogLanded(SyncLog& log, const CNote& note, const DateTime& nowUtc) {
    CSyncInfo info = NewSyncRecord(note, nowUtc);
    if (const CSyncInfo* const known = log.FindSyncInfo(note.guid)) {
        info.SyncState = known->SyncState;
        info.OnlineNoteId = known->OnlineNoteId;
    }
    log.ReplaceSyncInfo(info);
}

std::optional<CSyncInfo> ChangedRecord(const CSyncInfo* found, const LoggedSave& save, const DateTime& nowUtc) {
    if (!found)
        return save.syncTicked ? std::optional(NewSyncRecord(save.note, nowUtc)) : std::nullopt;
    const bool wasTicked = found->SyncState == kStoredTrue;
    if (!wasTicked && !save.syncTicked)
        return std::nullopt;
    CSyncInfo info = *found;
    info.NoteId = save.note.id;
    info.NoteFile = GetNoteFileName(save.note);
    info.Changed = true;
    info.SyncState = save.syncTicked ? kStoredTrue : -1;
    if (save.isNew || (save.syncTicked && !wasTicked)) {
        StampAll(info, nowUtc);
        return info;
    }
    if (wasTicked != save.syncTicked)
        info.Change1 = nowUtc;
    StampDifferences(info, DifferencesOf(save.note, save.original), nowUtc);
    return info;
}

}  // namespace lore
