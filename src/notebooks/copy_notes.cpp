#include "notebooks/copy_notes.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "base/file_copy.h"
#include "base/free_ids.h"
#include "classify/category_merge.h"
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

OpenNoteBook LoadTarget(const CDatabase& target, const CopyWorld& world, std::vector<CNote>& heads) {
    OpenNoteBook book;
    book.database = target;
    book.paths = NoteBookPaths(world.data, target.folder);
    TellFailedWrite(world.faults, "The folders of the NoteBook could not be made", book.paths.Folder(),
                    CreateNoteBookFolders(book.paths));
    LoadOptions options;
    // Only a NoteBook whose categories still have to be converted is opened as the desktop opens it.
    options.mode = NeedsCategoryConversion(book.paths) ? LoadMode::Full : LoadMode::ReadOnly;
    options.keepHeads = true;
    // Of the counters, opening it moves on that of the categories alone: the first copy takes the next number of a
    // note.
    IdCounters counters = world.counters;
    heads = LoadNoteBook(book, counters, world.context, world.faults, options).heads;
    world.counters.MaxCategoryID = counters.MaxCategoryID;
    return book;
}

/// One run of CopyNotesToNoteBook.
class NoteCopier {
public:
    NoteCopier(const CNoteList& notes, const CDatabase& target, const CopyWorld& world)
        : world_(world),
          target_(target),
          notes_(notes),
          book_(LoadTarget(target, world, heads_)),
          merge_(book_, world.counters),
          files_(world.from.paths.Attachments(), book_.paths.Attachments(), world.faults) {
        for (const CNote& head : heads_) {
            world_.counters.MaxNoteID = std::max(world_.counters.MaxNoteID, head.id);
            if (!head.guid.empty())
                byGuid_[head.guid].push_back(&head);
        }
    }

    CopyResult Run() {
        for (int group = 0; group < kGroups; ++group)
            world_.progress.StepIt();
        world_.progress.SetMessage(Message());
        if (!MakeEntries())
            return {};
        const bool newCategories = MapSourcesAndCategories();
        if (world_.progress.Cancelled())
            return {};
        world_.saveOptions();
        if (!CopyFiles() || !WriteMergedLists(book_, merge_, newCategories, world_.faults)) {
            for (const ArchiveNote& entry : entries_)
                files_.Drop(entry.note);
            return {};
        }
        return Store();
    }

private:
    std::string Message() const { return "Copying notes to *" + target_.name + "* NoteBook...."; }

    /// The notes with their new ids, and their sources as they travel, with their authors. False, and told, if there
    /// aren't enough ids.
    bool MakeEntries() {
        for (size_t i = 0; i < notes_.Count(); ++i) {
            ArchiveNote& entry = entries_.emplace_back(MakeArchiveNote(notes_[i], world_.from.sources));
            entry.note.displayRtf.clear();
            entry.note.id = book_.index.GiveID(world_.counters.MaxNoteID);
            if (entry.note.id == 0) {
                world_.faults.Tell({"The notes could not be copied", book_.paths.Notes().string(), kNoFreeID});
                return false;
            }
            for (CSource& source : entry.sources)
                EmbedAuthors(source, world_.from.authors);
            merge_.AddTypes(entry.sources);
        }
        merge_.NumberTypes();
        return true;
    }

    /// True if the forest has got more categories.
    bool MapSourcesAndCategories() {
        CategoryMerger merger(book_.categories, world_.counters.MaxCategoryID);
        for (size_t i = 0; i < entries_.size(); ++i) {
            world_.progress.SetMessage(Message() + std::to_string(i + 1) + " of " + std::to_string(entries_.size()));
            world_.progress.StepIt();
            ArchiveNote& entry = entries_[i];
            for (const CNote* existing : ExistingOf(entry.note))
                KeepSourceInfo(entry, *existing);
            merge_.MergeSourcesOf(entry);
            for (int set = 1; set <= kSetCount; ++set) {
                CProCategoryTree& path = entry.note.categories[static_cast<size_t>(set - 1)];
                if (path.name.empty() || IsUnassignedPath(path))
                    path = {};
                else
                    merger.MergePath(-1, path, set);
            }
        }
        return merger.HasAdded();
    }

    const std::vector<const CNote*>& ExistingOf(const CNote& note) const {
        static const std::vector<const CNote*> none;
        const auto found = byGuid_.find(note.guid);
        return found == byGuid_.end() ? none : found->second;
    }

    bool CopyFiles() {
        size_t tried = 0;
        bool goesOn = true;
        while (goesOn && tried < entries_.size())
            goesOn = !world_.progress.Cancelled() && files_.CopyFilesOf(entries_[tried++].note);
        // Beyond, the names are those of the first NoteBook.
        for (size_t i = tried; i < entries_.size(); ++i)
            entries_[i].note.attachments.clear();
        return goesOn;
    }

    /// The copies; the entries keep all but the texts.
    std::vector<CNote> TakeNotes() {
        std::vector<CNote> copies;
        for (ArchiveNote& entry : entries_) {
            std::string plainText = std::move(entry.note.plainText), rtfText = std::move(entry.note.rtfText);
            CNote& copy = copies.emplace_back(entry.note);
            copy.plainText = std::move(plainText);
            copy.rtfText = std::move(rtfText);
        }
        return copies;
    }

    CopyResult Store() {
        NoteStore store(book_, world_.context, world_.faults, nullptr);
        const LongList failed = store.SaveNotes(TakeNotes());
        CopyResult result{0, {}};
        LongList replaced;
        for (const ArchiveNote& entry : entries_) {
            if (failed.Contains(entry.note.id)) {
                files_.Drop(entry.note);
                continue;
            }
            ++result.copied;
            result.ids.AddTail(entry.note.id);
            for (const CNote* existing : ExistingOf(entry.note))
                replaced.AddUnique(existing->id);
            Record(entry.note);
        }
        const std::vector<CNote> deleted = store.DeleteNotes(replaced);
        if (world_.syncEngaged && book_.syncLog.link.IsLinked() && result.copied > 0)
            WriteSyncLog(book_, world_.faults);
        for (const CNote& note : deleted)
            files_.Drop(note);
        world_.progress.StepIt();
        return result;
    }

    void Record(const CNote& note) {
        CSyncInfo info = NewSyncRecord(note, world_.context.nowUtc);
        if (const CSyncInfo* known = book_.syncLog.FindSyncInfo(note.guid))
            info.OnlineNoteId = known->OnlineNoteId;
        book_.syncLog.ReplaceSyncInfo(info);
    }

    const CopyWorld& world_;
    const CDatabase& target_;
    const CNoteList& notes_;
    std::vector<CNote> heads_;
    OpenNoteBook book_;
    SourceMerge merge_;
    AttachmentCopies files_;
    std::unordered_map<std::string, std::vector<const CNote*>> byGuid_;
    std::vector<ArchiveNote> entries_;
};

}  // namespace

CopyResult CopyNotesToNoteBook(const CNoteList& notes, const CDatabase& target, const CopyWorld& world) {
    if (notes.IsEmpty() || target.id <= 0 || target.folder == world.from.database.folder)
        return {};
    world.progress.SetRange(0, static_cast<int>(notes.Count()) + kOtherSteps);
    world.progress.Show();
    world.progress.SetMessage("Loading *" + target.name + "* NoteBook.........(may take a few moments)");
    CopyResult result = NoteCopier(notes, target, world).Run();
    world.progress.Hide();
    return result;
}

CopyResult CopyNoteToNoteBook(const CNote& note, const std::vector<CDatabase>& noteBooks, const std::string& localGuid,
                              int32_t targetId, const CopyWorld& world) {
    const auto target = FindById(noteBooks, localGuid, targetId);
    if (!target)
        return {};
    world.progress.ShowStandBy("Loading note to copy.....");
    CNoteList list;
    list.AddNote(note, {});
    world.progress.HideStandBy();
    CopyResult result = CopyNotesToNoteBook(list, *target, world);
    if (result.copied > 0)
        world.prompts.Message("Your note has been successfully copied to " + target->name + "!", "Finished!",
                              PromptIcon::Information);
    return result;
}

}  // namespace lore
