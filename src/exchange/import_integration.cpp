#include "exchange/import_integration.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "base/free_ids.h"
#include "base/text.h"
#include "classify/category_merge.h"
#include "edit/attachment_store.h"
#include "edit/named_files.h"
#include "edit/note_removal.h"
#include "edit/sync_record.h"
#include "exchange/bring_back.h"
#include "exchange/merged_lists.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"
#include "notes/note_finder.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

/// Files may be named by several notes, each of which gets a copy, but not without end.
constexpr uint64_t kMostCopies = 4;

/// Unpacks attachment files into the attachment folder of the NoteBook under the next free numbers.
class AttachmentImport {
public:
    AttachmentImport(ImportArchive& archive, const ImportJob& job)
        : archive_(archive),
          faults_(job.ports.faults),
          paths_(job.book.paths),
          context_(job.context),
          folder_(paths_.Attachments()),
          room_(archive.SizeOfFiles() * kMostCopies) {}

    /// A file that the archive lacks, or that is damaged in it, is told; its attachment keeps the file that the
    /// existing note has under this name and title, otherwise it stays without one. `existing` may be null. `added` are
    /// the files of this machine that the user has attached to the note.
    void CopyFilesOf(CNote& note, const CNote* existing, const std::unordered_set<std::string>& added) {
        for (CAttachment& attachment : note.attachments) {
            if (attachment.type == kWebLink)
                continue;
            if (attachment.storedFile.empty() && added.contains(attachment.sourceFile)) {
                CopyAdded(attachment);
                continue;
            }
            // A path of another machine would be taken for a file to attach.
            attachment.sourceFile.clear();
            const std::string oldName = StoredName(attachment);
            const bool isHeld = Holds(existing, attachment);
            if (!oldName.empty() && !CopyFile(oldName, attachment, isHeld))
                attachment.storedFile = isHeld ? oldName : std::string();
        }
    }
    /// The names that were given out to a note's files.
    void Flush() {
        if (copied_)
            TellFailedWrite(faults_, "The attachment folder could not be written", folder_, FlushFolder(folder_));
    }

private:
    std::string NextName(std::string_view extension) {
        if (!number_)
            number_ = HighestAttachmentNumber(paths_, context_);
        return NextAttachmentName(folder_, *number_, extension);
    }

    static bool Holds(const CNote* existing, const CAttachment& attachment) {
        return existing &&
               std::any_of(existing->attachments.begin(), existing->attachments.end(), [&](const CAttachment& other) {
                   return StoredName(other) == StoredName(attachment) && other.title == attachment.title;
               });
    }

    /// One that can't be copied keeps its path: the next save of its note tries again.
    void CopyAdded(CAttachment& attachment) {
        const std::string name = NextName(FileExtension(attachment.sourceFile));
        const FileResult result = CopyFileAtomically(attachment.sourceFile, folder_ / name);
        TellFailedWrite(faults_, "A file could not be attached; saving its note tries once more", attachment.sourceFile,
                        result);
        if (!result.Ok())
            return;
        attachment.storedFile = name;
        attachment.sourceFile.clear();
    }

    /// `isHeld`: whether the note of the NoteBook has that file, and keeps it where there is no other.
    bool CopyFile(const std::string& oldName, CAttachment& attachment, bool isHeld) {
        const char* const outcome = isHeld ? "its note keeps the file that it has" : "its note comes without it";
        const ZipItem* const item = archive_.FileOf(attachment);
        if (!item) {
            faults_.Tell({"The file of the attachment \"" + attachment.title + "\" is missing in the archive",
                          ToUtf8(oldName), outcome});
            return false;
        }
        const std::string name = NextName(FileExtension(oldName));
        const std::filesystem::path target = folder_ / name;
        const ArchiveResult result = item->size > room_
                                         ? ArchiveResult::Failure("the notes name the files of the archive too often")
                                         : archive_.ExtractAtomically(*item, target);
        if (!result.Ok()) {
            faults_.Tell({"The attachment \"" + attachment.title + "\" could not be unpacked; " + outcome,
                          target.string(), result.reason});
            return false;
        }
        room_ -= item->size;
        attachment.storedFile = name;
        copied_ = true;
        return true;
    }

    ImportArchive& archive_;
    FaultNotice& faults_;
    const NoteBookPaths& paths_;
    const ReadContext& context_;
    std::filesystem::path folder_;
    std::optional<int> number_;  // the last that was given out
    uint64_t room_;              // how many bytes may still be unpacked
    bool copied_ = false;
};

class Integration {
public:
    Integration(ImportComparison& comparison, ImportArchive& archive, const ImportJob& job)
        : comparison_(comparison), archive_(archive), job_(job), chosen_(comparison.Chosen()) {}

    LongList Run(bool sync) {
        if (!HasRoomForFiles())
            return {};
        MergeSources();
        const bool newCategories = MergeCategories();
        if (!GiveIDs())
            return {};
        CopyAttachments();
        if (!WriteMergedLists(job_.book, merge_, newCategories, job_.ports.faults)) {
            DropCopiedFiles();
            return {};
        }
        return StoreNotes(sync);
    }

private:
    ArchiveNote& Entry(size_t position) { return comparison_.Row(position).entry; }

    bool HasRoomForFiles() const {
        uint64_t needed = 0;
        for (const size_t position : chosen_) {
            for (const CAttachment& attachment : comparison_.Rows()[position].entry.note.attachments) {
                if (const ZipItem* item = archive_.FileOf(attachment))
                    needed += std::min(item->size, std::numeric_limits<uint64_t>::max() - needed);
            }
        }
        const std::filesystem::path folder = job_.book.paths.Attachments();
        if (HasRoom(folder, needed))
            return true;
        job_.ports.faults.Tell({"There is no room for the attachments of the archive; nothing was imported",
                                folder.string(), FileResult{ENOSPC}.Reason()});
        return false;
    }

    void MergeSources() {
        if (archive_.sourcesNote)
            merge_.AddTypes(archive_.sourcesNote->sources);
        for (const size_t position : chosen_)
            merge_.AddTypes(Entry(position).sources);
        merge_.NumberTypes();
        if (archive_.sourcesNote)
            merge_.MergeSourcesOf(*archive_.sourcesNote);
        for (const size_t position : chosen_) {
            if (const CNote* existing = comparison_.ExistingHead(position))
                KeepSourceInfo(Entry(position), *existing);
            merge_.MergeSourcesOf(Entry(position));
        }
    }

    /// True if the forest has got more categories.
    bool MergeCategories() {
        CategoryMerger merger(job_.book.categories, job_.counters.MaxCategoryID);
        for (const size_t position : chosen_)
            MapCategories(Entry(position).note, merger);
        return merger.HasAdded();
    }

    /// False, and told, if there aren't enough.
    bool GiveIDs() {
        int& counter = job_.counters.MaxNoteID;
        for (const size_t position : chosen_) {
            const int32_t existing = comparison_.Rows()[position].existingID;
            const int32_t id = existing > 0 ? existing : job_.book.index.GiveID(counter);
            if (id <= 0) {
                job_.ports.faults.Tell({kNotesNotImported, job_.book.paths.Notes().string(), kNoFreeID});
                return false;
            }
            Entry(position).note.id = id;
            counter = std::max(counter, id);
        }
        return true;
    }

    void CopyAttachments() {
        AttachmentImport files(archive_, job_);
        for (const size_t position : chosen_) {
            files.CopyFilesOf(Entry(position).note, comparison_.ExistingHead(position),
                              comparison_.Rows()[position].addedFiles);
            job_.ports.progress.StepIt();
        }
        files.Flush();
    }

    LongList StoreNotes(bool sync) {
        std::vector<CNote> notes;
        for (const size_t position : chosen_)
            notes.push_back(TakeNote(Entry(position)));
        LongList failed = KeepChanges(notes);
        NoteStore store(job_.book, job_.context, job_.ports.faults, nullptr);
        failed.Merge(store.SaveNotes(std::move(notes), NoteStore::Place::AtTheEnd));
        LongList stored;
        std::vector<CAttachment> replaced, unstored;
        for (const size_t position : chosen_) {
            const CNote& note = Entry(position).note;
            if (failed.Contains(note.id)) {
                if (job_.changes)
                    job_.changes->landed.erase(note.id);
                AddUnshared(note, comparison_.ExistingHead(position), unstored);
                continue;
            }
            stored.AddTail(note.id);
            AddFilesOfReplaced(position, replaced);
            if (sync)
                LogLanded(job_.book.syncLog, note, job_.context.nowUtc);
        }
        DropFilesOfReplaced(replaced);
        DropFilesOfUnstored(unstored);
        if (sync && !stored.IsEmpty())
            WriteSyncLog(job_.book, job_.ports.faults);
        return stored;
    }

    /// Keeps what undoing the import needs. A note that would replace one that can't be read leaves `notes`, told: an
    /// undo would delete it, and nothing would come back. Gives the ids of those.
    LongList KeepChanges(std::vector<CNote>& notes) {
        if (!job_.changes)
            return {};
        LongList existing;
        for (const size_t position : chosen_) {
            if (comparison_.Rows()[position].existingID > 0)
                existing.AddTail(comparison_.Rows()[position].existingID);
        }
        job_.changes->replaced = FindNotes(job_.book.index, existing, job_.context, job_.ports.faults);
        job_.changes->sources = SourcesOfNotes(job_.changes->replaced, job_.book);
        LongList unread = Unread(existing);
        std::erase_if(notes, [&](const CNote& note) { return unread.Contains(note.id); });
        for (const CNote& note : notes)
            job_.changes->landed.emplace(note.id, FingerprintOf(note));
        return unread;
    }

    /// Those of the ids that no replaced note was kept of; each is told.
    LongList Unread(const LongList& existing) const {
        std::unordered_set<int32_t> kept;
        for (const CNote& note : job_.changes->replaced)
            kept.insert(note.id);
        LongList unread;
        for (const int32_t id : existing) {
            if (kept.contains(id))
                continue;
            unread.AddTail(id);
            const std::string* const path = job_.book.index.FindPath(id);
            job_.ports.faults.Tell({"A note was not imported", path ? *path : job_.book.paths.Notes().string(),
                                    "note " + std::to_string(id) + ", which it replaces, could not be read"});
        }
        return unread;
    }

    /// Only while no note file was touched: no note names them.
    void DropCopiedFiles() {
        for (const size_t position : chosen_)
            DeleteAttachmentFiles(UnsharedAttachments(Entry(position).note, comparison_.ExistingHead(position)),
                                  job_.book.paths.Attachments(), job_.ports.faults);
    }

    /// Adds the files of a replaced note that the new one doesn't name. A note that could not leave its old file may
    /// show from there after the next start.
    void AddFilesOfReplaced(size_t position, std::vector<CAttachment>& dropped) {
        const CNote* const existing = comparison_.ExistingHead(position);
        if (existing && !job_.book.index.HasHiddenCopy(existing->id))
            AddUnshared(*existing, &Entry(position).note, dropped);
    }

    static void AddUnshared(const CNote& note, const CNote* other, std::vector<CAttachment>& dropped) {
        const std::vector<CAttachment> files = UnsharedAttachments(note, other);
        dropped.insert(dropped.end(), files.begin(), files.end());
    }

    /// Those that no other note names go; those that an undo may want are put aside.
    void DropFilesOfReplaced(const std::vector<CAttachment>& dropped) {
        const NoteBookPaths& paths = job_.book.paths;
        CNote going;
        going.attachments = WithUnnamedFiles(dropped, "the replaced notes", {paths, job_.context, job_.ports.faults});
        if (job_.changes)
            NoteRemoval::KeepFilesOf(going, paths, job_.ports.faults);
        else
            DeleteAttachmentFiles(going.attachments, paths.Attachments(), job_.ports.faults);
    }

    /// A system that reports a rename as failed may have done it: what the note files name now stays.
    void DropFilesOfUnstored(const std::vector<CAttachment>& unstored) {
        const NoteBookPaths& paths = job_.book.paths;
        DeleteAttachmentFiles(WithUnnamedFiles(unstored, "the notes that could not be imported",
                                               {paths, job_.context, job_.ports.faults}),
                              paths.Attachments(), job_.ports.faults);
    }

    ImportComparison& comparison_;
    ImportArchive& archive_;
    const ImportJob& job_;
    std::vector<size_t> chosen_;
    SourceMerge merge_{job_.book, job_.counters};
};

}  // namespace

LongList IntegrateNotes(ImportComparison& comparison, ImportArchive& archive, bool sync, const ImportJob& job) {
    return Integration(comparison, archive, job).Run(sync);
}

}  // namespace lore
