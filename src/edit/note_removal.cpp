#include "edit/note_removal.h"

#include <system_error>

#include "base/file_descriptor.h"
#include "edit/attachment_store.h"
#include "edit/named_files.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"
#include "notes/note_filing.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

/// What became of files that were to be moved.
struct Moved {
    bool any = false;
    bool all = true;  ///< but those that aren't there
};

/// What stays where it is, was told.
Moved MoveFiles(const std::vector<CAttachment>& attachments, const std::filesystem::path& from,
                const std::filesystem::path& to, FaultNotice& faults) {
    Moved moved;
    for (const CAttachment& attachment : attachments) {
        const std::filesystem::path file = AttachmentPath(attachment, from);
        std::error_code error;
        if (file.empty() || (!std::filesystem::exists(file, error) && !error))
            continue;
        if (!error)
            error.assign(MakeFolders(to).error, std::generic_category());
        if (!error)
            std::filesystem::rename(file, to / file.filename(), error);
        if (error)
            faults.Tell({"An attachment file could not be moved", file.string(), error.message()});
        moved.any = moved.any || !error;
        moved.all = moved.all && !error;
    }
    return moved;
}

}  // namespace

std::filesystem::path KeptFilesFolder(const NoteBookPaths& paths) {
    return paths.Folder() / kKeptFilesName;
}

void NoteRemoval::KeepFilesOf(const CNote& note, const NoteBookPaths& paths, FaultNotice& faults) {
    MoveFiles(note.attachments, paths.Attachments(), KeptFilesFolder(paths), faults);
}

DeletedNotes NoteRemoval::DeleteNotes(const LongList& ids, GoneFiles files) {
    DeletedNotes deleted;
    deleted.notes = NoteStore(book_, context_, faults_, texts_).DeleteNotes(ids);
    UnfileNotes(book_, deleted.notes);
    std::vector<CAttachment> going;
    for (const CNote& note : deleted.notes)
        going.insert(going.end(), note.attachments.begin(), note.attachments.end());
    going = WithUnnamedFiles(going, "the deleted notes", {book_.paths, context_, faults_, background_});
    if (files == GoneFiles::Kept) {
        deleted.keptFiles = KeptFilesFolder(book_.paths);
        MoveFiles(going, book_.paths.Attachments(), deleted.keptFiles, faults_);
    } else {
        DeleteAttachmentFiles(going, book_.paths.Attachments(), faults_);
    }
    StampRecords(deleted.notes);
    return deleted;
}

LongList NoteRemoval::RestoreFiles(const DeletedNotes& deleted) {
    LongList without;
    if (deleted.keptFiles.empty())
        return without;
    const std::filesystem::path attachments = book_.paths.Attachments();
    bool any = false;
    for (const CNote& note : deleted.notes) {
        const Moved moved = MoveFiles(note.attachments, deleted.keptFiles, attachments, faults_);
        any = any || moved.any;
        if (!moved.all)
            without.AddTail(note.id);
    }
    // A power cut must not leave a note that is written next without its file.
    if (any)
        TellFailedWrite(faults_, "Attachment files could not be written", attachments, FlushFolder(attachments));
    return without;
}

Unrestored NoteRemoval::RestoreNotes(const DeletedNotes& deleted) {
    Unrestored failed;
    failed.withoutFiles = RestoreFiles(deleted);
    failed.unwritten = NoteStore(book_, context_, faults_, texts_).SaveNotes(deleted.notes);
    std::vector<CNote> restored;
    for (const CNote& note : deleted.notes) {
        if (!failed.unwritten.Contains(note.id))
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
