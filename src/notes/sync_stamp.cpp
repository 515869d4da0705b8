#include "notes/sync_stamp.h"

#include "base/record_file.h"
#include "notes/file_faults.h"
#include "notes/keep_damaged.h"

namespace lore {

bool StampSyncRecord(SyncLog& log, std::string_view guid, const std::function<void(CSyncInfo&)>& change) {
    const CSyncInfo* const found = log.FindSyncInfo(guid);
    if (!log.link.IsLinked() || !found || found->SyncState != kStoredTrue)
        return false;
    CSyncInfo info = *found;
    info.Changed = true;
    change(info);
    log.ReplaceSyncInfo(info);
    return true;
}

bool WriteSyncLog(OpenNoteBook& book, FaultNotice& faults) {
    FileResult result;
    if (!book.syncLog.ReadWhole())
        result =
            KeepDamaged("The sync log", book.paths.SyncLog(), "it breaks off, or holds a byte that cuts it", faults);
    if (result.Ok())
        result = SaveSyncLogTo(book.paths.SyncLog(), book.syncLog);
    if (result.Ok())
        book.syncLog.MarkWhole();
    TellFailedWrite(faults, kSyncLogUnwritten, book.paths.SyncLog(), result);
    return result.Ok();
}

}  // namespace lore
