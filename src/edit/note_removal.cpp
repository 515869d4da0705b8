#include "edit/note_removal.h"

#include "edit/attachment_store.h"
#include "notes/file_faults.h"
#include "notes/note_filing.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

void MoveFiles(const CNote& note, const std::filesystem::path& from, const std::filesystem::path& to,
               FaultNotice& faults) {
    std::error_code error;
    for (const CAttachment& attachment : note.attachments) {
        const std::filesystem::path file = AttachmentPath(attachment, from);
        if (file.empty() || !std::filesystem::exists(file, error))
            continue;
        std::filesystem::create_directories(to, error);
        std::filesystem::rename(file, to / file.filename(), error);
        if (error)
            faults.Tell({"An attachment file could not be moved", file.string(), error.message()});
    }
}

}  // namespace

std::filesystem::path KeptFilesFolder(const NoteBookPaths& paths) {
    return paths.Folder() / kKeptFilesName;
}

void NoteRemoval::KeepFilesOf(const CNote& note, const NoteBookPaths& paths, FaultNotice& faults) {
    MoveFiles(note, paths.Attachments(), KeptFilesFolder(paths), faults);
}

DeletedNotes NoteRemoval::DeleteNotes(const LongList& ids, bool keepFiles) {
    DeletedNotes deleted;
    deleted.notes = NoteStore(book_, context_, faults_, texts_).DeleteNotes(ids);
    UnfileNotes(book_, deleted.notes);
    if (keepFiles) {
        deleted.keptFiles = KeptFilesFolder(book_.paths);
        for (const CNote& note : deleted.notes)
            KeepFilesOf(note, book_.paths, faults_);
    } else {
        for (const CNote& note : deleted.notes)
            DeleteAttachmentFiles(note.attachments, book_.paths.Attachments(), faults_);
    }
    StampRecords(deleted.notes);
    return deleted;
}

LongList NoteRemoval::RestoreNotes(const DeletedNotes& deleted) {
    for (const CNote& note : deleted.notes) {
        if (!deleted.keptFiles.empty())
            MoveFiles(note, deleted.keptFiles, book_.paths.Attachments(), faults_);
    }
    LongList failed = NoteStore(book_, context_, faults_, texts_).SaveNotes(deleted.notes);
    std::vector<CNote> restored;
    for (const CNote& note : deleted.notes) {
        if (!failed.Contains(note.id))
            restored.push_back(note);
    }
    FileNotes(book_, restored);
    StampRecords(restored);
    return failed;
}

void NoteRemoval::DiscardKeptFiles(const NoteBookPaths& paths, FaultNotice& faults) {
    std::error_code error;
    std::filesystem::remove_all(KeptFilesFolder(paths), error);
    if (error)
        faults.Tell({"Files of deleted notes could not be removed", KeptFilesFolder(paths).string(), error.message()});
}

void NoteRemoval::StampRecords(const std::vector<CNote>& notes) {
    bool stamped = false;
    for (const CNote& note : notes) {
        const bool hasRecord =
            StampSyncRecord(book_.syncLog, note.guid, [&](CSyncInfo& info) { info.Change1 = context_.nowUtc; });
        stamped = stamped || hasRecord;
    }
    if (stamped)
        WriteSyncLog(book_, faults_);
}

}  // namespace lore
