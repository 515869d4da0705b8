#include "notebooks/copy_notes.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "base/file_copy.h"
#include "base/free_ids.h"
#include "classify/category_merge.h"
#include "edit/named_files.h"
#include "edit/sync_record.h"
#include "exchange/merged_lists.h"
#include "notebooks/copy_attachments.h"
#include "notes/category_conversion.h"
#include "notes/file_faults.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

/// Steps of the progress beside one for each note: six groups of data that are read, and the writing.
constexpr int kOtherSteps = 7;
constexpr int kGroups = 6;
constexpr char kNotCopied[] = "The notes could not be copied";

/// A copied note takes its sources along; were the ids of all their notes to go with each, a source of many notes would
/// cost their square.
SourceList WithoutNoteIDs(SourceList sources) {
    for (size_t i = 0; i < sources.Count(); ++i)
        sources[i].NoteIDs.RemoveAll();
    return sources;
}

struct LoadedTarget {
    OpenNoteBook book;
    std::vector<CNote> heads;
    bool isUnread = false;  // which is told: not all of the NoteBook could be read
};

LoadedTarget LoadTarget(const CDatabase& target, const CopyJob& job) {
    LoadedTarget loaded{.book = OpenNoteBook::At(job.data, target), .heads = {}};
    OpenNoteBook& book = loaded.book;
    TellFailedWrite(job.ports.faults, kNoteBookFoldersUnmade, book.paths.Folder(), CreateNoteBookFolders(book.paths));
    LoadOptions options;
    // Only a NoteBook whose categories still have to be converted is opened as the desktop opens it.
    options.mode = NeedsCategoryConversion(book.paths) ? LoadMode::Full : LoadMode::ReadOnly;
    options.keepHeads = true;
    // Of the counters, opening it moves on that of the categories alone: the first copy takes the next number of a
    // note.
    IdCounters counters = job.counters;
    HeardFaults faults(job.ports.faults, loaded.isUnread);
    loaded.heads = LoadNoteBook(book, counters, job.context, faults, options).heads;
    job.counters.MaxCategoryID = counters.MaxCategoryID;
    return loaded;
}

/// One run of CopyNotesToNoteBook.
class NoteCopier {
public:
    NoteCopier(const CNoteList& notes, const CDatabase& target, const CopyJob& job)
        : job_(job),
          target_(target),
          notes_(notes),
          loaded_(LoadTarget(target, job)),
          merge_(book_, job.counters),
          files_(job.from.paths.Attachments(), book_.paths, loaded_.heads, job.ports.faults),
          sources_(WithoutNoteIDs(job.from.sources)) {
        for (const CNote& head : loaded_.heads) {
            job_.counters.MaxNoteID = std::max(job_.counters.MaxNoteID, head.id);
            if (!head.guid.empty())
                byGuid_[head.guid].push_back(&head);
        }
    }

    CopyResult Run() {
        for (int group = 0; group < kGroups; ++group)
            job_.ports.progress.StepIt();
        job_.ports.progress.SetMessage(Message());
        if (loaded_.isUnread)
            job_.ports.faults.Tell(
                {kNotCopied, book_.paths.Folder().string(), "not all of the NoteBook could be read"});
        if (loaded_.isUnread || !MakeEntries())
            return {};
        if (entries_.empty())
            return {0, {}, newer_};
        const bool newCategories = MapSourcesAndCategories();
        if (job_.ports.progress.Cancelled())
            return {};
        // The merge leaves the counter one short of the last category that it made.
        book_.categories.GetMaxCategoryID(job_.counters.MaxCategoryID);
        job_.storeCounters();
        if (!CopyFiles() || !WriteMergedLists(book_, merge_, newCategories, job_.ports.faults)) {
            CNote going;
            for (const ArchiveNote& entry : entries_)
                AddFilesOf(entry.note, going);
            DropUnnamedFilesOf(going);
            return {};
        }
        return Store();
    }

private:
    std::string Message() const { return "Copying notes to *" + target_.name + "* NoteBook...."; }

    /// The notes that the target has in no newer form with their new ids, and their sources as they travel, with their
    /// authors. False, and told, if there aren't enough ids.
    bool MakeEntries() {
        for (size_t i = 0; i < notes_.Count(); ++i) {
            if (HasNewer(notes_[i])) {
                ++newer_;
                continue;
            }
            ArchiveNote& entry = entries_.emplace_back(MakeArchiveNote(notes_[i], sources_, job_.from.authors));
            entry.note.displayRtf.clear();
            entry.note.id = book_.index.GiveID(job_.counters.MaxNoteID);
            if (entry.note.id == 0) {
                job_.ports.faults.Tell({kNotCopied, book_.paths.Notes().string(), kNoFreeID});
                return false;
            }
            merge_.AddTypes(entry.sources);
        }
        merge_.NumberTypes();
        return true;
    }

    /// True if the forest has got more categories.
    bool MapSourcesAndCategories() {
        CategoryMerger merger(book_.categories, job_.counters.MaxCategoryID);
        for (size_t i = 0; i < entries_.size(); ++i) {
            job_.ports.progress.SetMessage(Message() + std::to_string(i + 1) + " of " +
                                           std::to_string(entries_.size()));
            job_.ports.progress.StepIt();
            ArchiveNote& entry = entries_[i];
            for (const CNote* existing : ExistingOf(entry.note))
                KeepSourceInfo(entry, *existing);
            merge_.MergeSourcesOf(entry);
            MapCategories(entry.note, merger);
        }
        return merger.HasAdded();
    }

    const std::vector<const CNote*>& ExistingOf(const CNote& note) const {
        static const std::vector<const CNote*> none;
        const auto found = byGuid_.find(note.guid);
        return found == byGuid_.end() ? none : found->second;
    }

    bool HasNewer(const CNote& note) const {
        const std::vector<const CNote*>& existing = ExistingOf(note);
        return std::any_of(existing.begin(), existing.end(), [&](const CNote* other) {
            return !(note.dateEdited == other->dateEdited) && note.dateEdited.IsEarlierOrEqual(other->dateEdited);
        });
    }

    bool CopyFiles() {
        size_t tried = 0;
        bool goesOn = true;
        while (goesOn && tried < entries_.size()) {
            CNote& note = entries_[tried++].note;
            goesOn = !job_.ports.progress.Cancelled() && files_.CopyFilesOf(note, ExistingOf(note));
        }
        // Beyond, the names are those of the first NoteBook.
        for (size_t i = tried; i < entries_.size(); ++i)
            entries_[i].note.attachments.clear();
        return goesOn;
    }

    /// The notes of the target whose place a copy takes: of several with its guid, which may each be a note of its own,
    /// those that hold its text, or else the first.
    LongList ReplacedBy(const CNote& copy) const {
        const std::vector<const CNote*>& existing = ExistingOf(copy);
        LongList ids;
        for (size_t i = 0; existing.size() > 1 && i < existing.size(); ++i) {
            const auto other = FindNote(book_.index, existing[i]->id, job_.context, job_.ports.faults);
            if (other && other->rtfText == copy.rtfText)
                ids.AddTail(other->id);
        }
        if (ids.IsEmpty() && !existing.empty())
            ids.AddTail(existing.front()->id);
        return ids;
    }

    CopyResult Store() {
        std::vector<CNote> copies;
        for (ArchiveNote& entry : entries_) {
            replaced_[entry.note.id] = ReplacedBy(entry.note);
            copies.push_back(TakeNote(entry));
        }
        NoteStore store(book_, job_.context, job_.ports.faults, nullptr);
        const LongList failed = store.SaveNotes(std::move(copies));
        CopyResult result{0, {}, newer_};
        LongList replaced;
        CNote going;  // has all files that may go
        for (const ArchiveNote& entry : entries_) {
            if (failed.Contains(entry.note.id)) {
                AddFilesOf(entry.note, going);
                continue;
            }
            ++result.copied;
            result.ids.AddTail(entry.note.id);
            replaced.Merge(replaced_[entry.note.id]);
            LogLanded(book_.syncLog, entry.note, job_.context.nowUtc);
        }
        for (const CNote& note : store.DeleteNotes(replaced))
            AddFilesOf(note, going);
        if (job_.syncEngaged && book_.syncLog.link.IsLinked() && result.copied > 0)
            WriteSyncLog(book_, job_.ports.faults);
        DropUnnamedFilesOf(going);
        job_.ports.progress.StepIt();
        return result;
    }

    static void AddFilesOf(const CNote& note, CNote& going) {
        going.attachments.insert(going.attachments.end(), note.attachments.begin(), note.attachments.end());
    }

    /// Those that no note of the target names, as its files stand: a system that reports a rename as failed may have
    /// done it, and then a copy names them.
    void DropUnnamedFilesOf(CNote& going) {
        going.attachments = WithUnnamedFiles(going.attachments, "notes that were replaced or could not be copied",
                                             {book_.paths, job_.context, job_.ports.faults});
        files_.Drop(going);
    }

    const CopyJob& job_;
    const CDatabase& target_;
    const CNoteList& notes_;
    LoadedTarget loaded_;
    OpenNoteBook& book_ = loaded_.book;
    SourceMerge merge_;
    AttachmentCopies files_;
    std::unordered_map<std::string, std::vector<const CNote*>> byGuid_;
    const SourceList sources_;  // of the NoteBook that is open, without the notes that each has
    std::vector<ArchiveNote> entries_;
    std::unordered_map<int32_t, LongList> replaced_;  // by the id of the copy
    int newer_ = 0;
};

void TellNewer(int count, const CDatabase& target, Prompts& prompts) {
    if (count > 0)
        prompts.Message(target.name + " has newer forms of  *" + std::to_string(count) +
                            "*  of the notes. They stay as they are, and these notes were not copied.",
                        "Notes Not Copied", PromptIcon::Information);
}

}  // namespace

CopyResult CopyNotesToNoteBook(const CNoteList& notes, const CDatabase& target, const CopyJob& job) {
    if (notes.IsEmpty() || target.id <= 0 || target.folder == job.from.database.folder)
        return {};
    job.ports.progress.SetRange(0, static_cast<int>(notes.Count()) + kOtherSteps);
    job.ports.progress.Show();
    job.ports.progress.SetMessage("Loading *" + target.name + "* NoteBook.........(may take a few moments)");
    CopyResult result = NoteCopier(notes, target, job).Run();
    job.ports.progress.Hide();
    TellNewer(result.newer, target, job.ports.prompts);
    return result;
}

CopyResult CopyNoteToNoteBook(const CNote& note, const std::vector<CDatabase>& noteBooks, const std::string& localGUID,
                              int32_t targetId, const CopyJob& job) {
    const auto target = FindById(noteBooks, localGUID, targetId);
    if (!target)
        return {};
    job.ports.progress.ShowStandBy("Loading note to copy.....");
    CNoteList list;
    list.AddNote(note, {});
    job.ports.progress.HideStandBy();
    CopyResult result = CopyNotesToNoteBook(list, *target, job);
    if (result.copied > 0)
        job.ports.prompts.Message("Your note has been successfully copied to " + target->name + "!", "Finished!",
                                  PromptIcon::Information);
    return result;
}

}  // namespace lore
