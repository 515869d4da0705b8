#include "exchange/import_undo.h"

#include <algorithm>
#include <functional>
#include <string>
#include <unordered_set>
#include <utility>

#include "edit/attachment_store.h"
#include "edit/named_files.h"
#include "edit/note_removal.h"
#include "exchange/bring_back.h"
#include "notes/note_file.h"
#include "notes/note_filing.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

/// One try to undo an import, phase by phase.
class ImportUndo {
public:
    ImportUndo(ImportChanges& changes, OpenNoteBook& book, const ReadContext& context, FaultNotice& faults,
               TextCache* texts)
        : changes_(changes),
          book_(book),
          context_(context),
          faults_(faults),
          removal_(book, context, faults, texts),
          left_(changes.landed),
          restored_{{}, KeptFilesFolder(book.paths)} {}

    std::optional<LongList> Run(IdCounters& counters, const std::function<void()>& store);

private:
    void TakeUntouched();
    void PairWithReplaced();
    void PutReplacedBack();
    void TakeAddedOut();
    void LeaveRest();
    void KeepLanded(int32_t id) { left_.insert(*changes_.landed.find(id)); }

    ImportChanges& changes_;
    OpenNoteBook& book_;
    const ReadContext& context_;
    FaultNotice& faults_;
    NoteRemoval removal_;
    std::unordered_map<int32_t, size_t> left_;      // what landed and isn't undone yet
    std::unordered_map<int32_t, CNote> untouched_;  // still as they came in; once paired, those that replaced nothing
    LongList changed_;                              // since they came in
    DeletedNotes restored_;
    std::vector<CNote> successors_;  // what has replaced them, parallel
    std::vector<CAttachment> dropped_;
    Unrestored failed_;
    LongList lacking_;  // of earlier tries, without a file still
};

std::optional<LongList> ImportUndo::Run(IdCounters& counters, const std::function<void()>& store) {
    TakeUntouched();
    PairWithReplaced();
    if (!BringBackWhatNotesName(restored_.notes, changes_.sources, book_, counters, faults_))
        return std::nullopt;
    store();
    PutReplacedBack();
    TakeAddedOut();
    DeleteAttachmentFiles(WithUnnamedFiles(dropped_, "the imported notes", {book_.paths, context_, faults_}),
                          book_.paths.Attachments(), faults_);
    LeaveRest();
    return changed_;
}

/// Tells those apart that were changed since. What can't be read is left.
void ImportUndo::TakeUntouched() {
    std::erase_if(left_, [&](const auto& note) { return !book_.index.Contains(note.first); });
    LongList ids;
    for (const auto& [id, fingerprint] : left_)
        ids.AddTail(id);
    for (CNote& note : FindNotes(book_.index, ids, context_, faults_)) {
        const auto came = left_.find(note.id);
        if (came == left_.end())
            continue;
        if (FingerprintOf(note) == came->second)
            untouched_.emplace(note.id, std::move(note));
        else
            changed_.AddTail(note.id);
        left_.erase(came);
    }
}

void ImportUndo::PairWithReplaced() {
    for (const CNote& note : changes_.replaced) {
        const auto found = untouched_.find(note.id);
        if (found == untouched_.end())
            continue;
        restored_.notes.push_back(note);
        successors_.push_back(std::move(found->second));
        untouched_.erase(found);
    }
}

void ImportUndo::PutReplacedBack() {
    UnfileNotes(book_, successors_);
    lacking_ = removal_.RestoreFiles({changes_.withoutFiles, restored_.keptFiles});
    failed_ = removal_.RestoreNotes(restored_);
    for (size_t i = 0; i < successors_.size(); ++i) {
        const CNote& successor = successors_[i];
        if (failed_.unwritten.Contains(successor.id)) {
            FileNotes(book_, {&successor, 1});
            KeepLanded(successor.id);
        } else if (!book_.index.HasHiddenCopy(successor.id)) {  // it would show after the next start
            const std::vector<CAttachment> files = UnsharedAttachments(successor, &restored_.notes[i]);
            dropped_.insert(dropped_.end(), files.begin(), files.end());
        }
    }
}

void ImportUndo::TakeAddedOut() {
    LongList added;
    for (const auto& [id, note] : untouched_)
        added.AddTail(id);
    removal_.DeleteNotes(added, GoneFiles::Deleted);
    for (const int32_t id : added) {
        if (book_.index.Contains(id))
            KeepLanded(id);
    }
}

void ImportUndo::LeaveRest() {
    changes_.landed = std::move(left_);
    std::erase_if(changes_.withoutFiles, [&](const CNote& note) { return !lacking_.Contains(note.id); });
    std::vector<CNote> toComeBack;
    for (CNote& note : changes_.replaced) {
        if (changes_.landed.contains(note.id))
            toComeBack.push_back(std::move(note));
        else if (failed_.withoutFiles.Contains(note.id))
            changes_.withoutFiles.push_back(std::move(note));
    }
    changes_.replaced = std::move(toComeBack);
}

}  // namespace

size_t NotesThatLeave(const ImportChanges& changes, const OpenNoteBook& book) {
    std::unordered_set<int32_t> replaced;
    for (const CNote& note : changes.replaced)
        replaced.insert(note.id);
    return static_cast<size_t>(std::count_if(changes.landed.begin(), changes.landed.end(), [&](const auto& landed) {
        return !replaced.contains(landed.first) && book.index.Contains(landed.first);
    }));
}

size_t FingerprintOf(const CNote& note) {
    return std::hash<std::string>()(NoteFileBytes({&note, 1}));
}

std::optional<LongList> UndoImport(ImportChanges& changes, OpenNoteBook& book, IdCounters& counters,
                                   const std::function<void()>& store, const ReadContext& context, FaultNotice& faults,
                                   TextCache* texts) {
    return ImportUndo(changes, book, context, faults, texts).Run(counters, store);
}

}  // namespace lore
