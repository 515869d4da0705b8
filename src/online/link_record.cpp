#include "online/link_record.h"

#include <algorithm>
#include <vector>

#include "base/record_file.h"
#include "notes/file_faults.h"
#include "notes/note_file_walk.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

constexpr int kReaders = 2;

std::vector<std::filesystem::path> FoldersOf(const std::filesystem::path& parent) {
    std::vector<std::filesystem::path> folders;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(parent, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->is_directory(error))
            folders.push_back(entry->path());
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

void ResetLinkIn(const std::filesystem::path& file, FaultNotice& faults) {
    SyncLog log;
    const FileResult read = LoadSyncLogFrom(file, log);
    TellFailedRead(faults, kSyncLogUnread, file, read);
    if (!read.Ok())
        return;
    log.ResetLink();
    TellFailedWrite(faults, kSyncLogUnwritten, file, SaveSyncLogTo(file, log));
}

/// The other online NoteBook knows none of the notes.
void SendAllAnew(SyncLog& log) {
    const std::vector<CSyncInfo> records = log.Records();
    const SyncLink link = log.link;
    log.ResetLink();
    log.link = link;
    for (CSyncInfo info : records) {
        info.OnlineNoteId = -1;
        info.Changed = true;
        log.Add(std::move(info));
    }
}

CSyncInfo RecordOf(const CNote& note, const std::string& file, const DateTime& changed) {
    CSyncInfo info;
    info.NoteId = note.id;
    info.SyncState = kStoredTrue;
    info.NoteKey = note.guid;
    info.NoteFile = file;
    info.Change1 = info.Change2 = info.SourcesChanged = info.KeyWordsChanged = info.CategoriesChanged = changed;
    return info;
}

void AddMissingNotes(const OnlineWorld& world) {
    const std::vector<std::filesystem::path> files = NoteFilesOf(world.book.paths.Notes(), world.faults);
    std::vector<std::vector<CSyncInfo>> found(files.size());
    world.progress.SetRange(0, static_cast<int>(files.size()));
    WalkNoteFiles(
        files, world.context, kReaders,
        [&](size_t file, NoteFileReader& notes) {
            while (notes.Next())
                found[file].push_back(
                    RecordOf(notes.Head(), files[file].filename().string(), world.toUtc(notes.Head().dateEdited)));
        },
        [&](size_t file, const FileResult& result) {
            TellFailedRead(world.faults, kNoteFileUnread, files[file], result);
            for (CSyncInfo& info : found[file]) {
                if (!world.book.syncLog.FindSyncInfo(info.NoteKey))
                    world.book.syncLog.Add(std::move(info));
            }
            found[file].clear();
            world.progress.StepIt();
        });
}

}  // namespace

std::string DesktopNameOf(const OpenNoteBook& book) {
    return book.database.IsMain() ? kMainNoteBookName : book.database.name;
}

void RefreshLink(OpenNoteBook& book) {
    book.syncLog.link.DesktopName = DesktopNameOf(book);
    book.syncLog.link.NoteBookGuid = book.database.guid;
}

void DropLink(SyncLink& link) {
    link.Linked = -1;
    link.OnlineNoteBookID = -1;
    link.OnlineName.clear();
}

void ResetAllLinks(const OnlineWorld& world) {
    for (const std::filesystem::path& folder : FoldersOf(world.data.Databases())) {
        const std::filesystem::path file = folder / world.book.paths.SyncLog().filename();
        std::error_code error;
        if (std::filesystem::exists(file, error))
            ResetLinkIn(file, world.faults);
    }
    TellFailedRead(world.faults, kSyncLogUnread, world.book.paths.SyncLog(),
                   LoadSyncLogFrom(world.book.paths.SyncLog(), world.book.syncLog));
}

void UpdateLocalSyncLog(const OnlineWorld& world, int32_t previousId) {
    SyncLog& log = world.book.syncLog;
    world.progress.Show();
    world.progress.SetMessage("Updating Local Sync Information....(may take a few moments)");
    RefreshLink(world.book);
    if (!log.link.IsLinked()) {
        log.ResetLink();
    } else {
        if (log.link.OnlineNoteBookID != previousId)
            SendAllAnew(log);
        AddMissingNotes(world);
    }
    WriteSyncLog(world.book, world.faults);
    world.progress.Hide();
}

}  // namespace lore
