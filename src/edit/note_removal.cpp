#include "edit/note_removal.h"

#include <optional>
#include <unordered_set>
#include <utility>

#include "edit/attachment_store.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"
#include "notes/note_file_walk.h"
#include "notes/note_filing.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

using Names = std::unordered_set<std::string>;

/// Those of the stored names that notes of a folder hold. Nothing, told, if the folder or one of its files can't be
/// read.
std::optional<Names> NamesInUse(const Names& names, const std::filesystem::path& notesFolder,
                                const ReadContext& context, const std::stop_token& stop, FaultNotice& faults) {
    std::vector<std::filesystem::path> files;
    bool isRead = ListNoteFiles(notesFolder, faults, files);
    std::vector<Names> found(files.size());
    Names used;
    WalkNoteFiles(
        files, context, kReadThreads,
        [&](size_t file, NoteFileReader& reader) {
            while (reader.Next()) {
                for (const CAttachment& attachment : reader.Head().attachments) {
                    if (std::string name = StoredName(attachment); names.contains(name))
                        found[file].insert(std::move(name));
                }
            }
        },
        [&](size_t file, const FileResult& result) {
            TellFailedRead(faults, kNoteFileUnread, files[file], result);
            isRead = isRead && (result.Ok() || result.Missing());
            used.merge(found[file]);
        },
        stop, HeadParts::Place);
    return isRead ? std::optional(std::move(used)) : std::nullopt;
}

/// The attachments whose files go with notes that have left their files. In damaged data, or where files were copied by
/// hand, another note may name the same file: without a look at all of them no file goes. Reads the other notes only if
/// there is a file.
std::vector<CAttachment> FilesOnlyOf(const std::vector<CNote>& notes, const NoteBookPaths& paths,
                                     const ReadContext& context, Background* background, FaultNotice& faults) {
    std::vector<CAttachment> stored;
    Names names;
    for (const CNote& note : notes) {
        for (const CAttachment& attachment : note.attachments) {
            std::string name = StoredName(attachment);
            if (name.empty())
                continue;
            stored.push_back(attachment);
            names.insert(std::move(name));
        }
    }
    if (names.empty())
        return stored;
    std::optional<Names> used;
    KeptForLater met;
    const bool done = RunBeside(background, "Deleting Attachments....", [&](const std::stop_token& stop) {
        used = NamesInUse(names, paths.Notes(), context, stop, met);
    });
    met.TellAll(faults);
    if (!done || !used) {
        faults.Tell({"The attachment files of the deleted notes were left where they are", paths.Attachments().string(),
                     done ? "other notes may name them, and not all of those could be read"
                          : "other notes may name them, and the search for those was stopped"});
        return {};
    }
    std::erase_if(stored, [&](const CAttachment& attachment) { return used->contains(StoredName(attachment)); });
    return stored;
}

/// False, and told, if one of the files stays where it is.
bool MoveFiles(const std::vector<CAttachment>& attachments, const std::filesystem::path& from,
               const std::filesystem::path& to, FaultNotice& faults) {
    std::error_code error;
    bool moved = true;
    for (const CAttachment& attachment : attachments) {
        const std::filesystem::path file = AttachmentPath(attachment, from);
        if (file.empty() || !std::filesystem::exists(file, error))
            continue;
        error.assign(MakeFolders(to).error, std::generic_category());
        if (!error)
            std::filesystem::rename(file, to / file.filename(), error);
        if (error)
            faults.Tell({"An attachment file could not be moved", file.string(), error.message()});
        moved = moved && !error;
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

DeletedNotes NoteRemoval::DeleteNotes(const LongList& ids, bool keepFiles) {
    DeletedNotes deleted;
    deleted.notes = NoteStore(book_, context_, faults_, texts_).DeleteNotes(ids);
    UnfileNotes(book_, deleted.notes);
    const std::vector<CAttachment> going = FilesOnlyOf(deleted.notes, book_.paths, context_, background_, faults_);
    if (keepFiles) {
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
    for (const CNote& note : deleted.notes) {
        if (!deleted.keptFiles.empty() &&
            !MoveFiles(note.attachments, deleted.keptFiles, book_.paths.Attachments(), faults_))
            without.AddTail(note.id);
    }
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
