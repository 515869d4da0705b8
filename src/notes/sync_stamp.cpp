#include "notes/sync_stamp.h"

#include "base/file_copy.h"
#include "base/record_file.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

FileResult KeepDamaged(const std::filesystem::path& file, FaultNotice& faults) {
    std::filesystem::path kept;
    const FileResult result = KeepCopy(file, kept);
    if (result.Ok())
        faults.Tell({"The sync log is damaged; what it held is kept in " + kept.filename().string(), file.string(),
                     "it breaks off, or holds a byte that cuts it"});
    return result.Missing() ? FileResult{} : result;
}

}  // namespace

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
    FileResult result = book.syncLog.ReadWhole() ? FileResult{} : KeepDamaged(book.paths.SyncLog(), faults);
    if (result.Ok())
        result = SaveSyncLogTo(book.paths.SyncLog(), book.syncLog);
    if (result.Ok())
        book.syncLog.MarkWhole();
    TellFailedWrite(faults, "The sync log could not be written", book.paths.SyncLog(), result);
    return result.Ok();
}

}  // namespace lore
