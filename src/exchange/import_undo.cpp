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

/// Takes the notes of an import that are still as they came in out of `landed`, by id; `changed` counts the others.
/// What is left there can't be read.
std::unordered_map<int32_t, CNote> TakeUntouched(std::unordered_map<int32_t, size_t>& landed, const OpenNoteBook& book,
                                                 const ReadContext& context, FaultNotice& faults, size_t& changed) {
    std::erase_if(landed, [&](const auto& note) { return !book.index.Contains(note.first); });
    LongList ids;
    for (const auto& [id, fingerprint] : landed)
        ids.AddTail(id);
    std::unordered_map<int32_t, CNote> untouched;
    for (CNote& note : FindNotes(book.index, ids, context, faults)) {
        const auto came = landed.find(note.id);
        if (came == landed.end())
            continue;
        if (FingerprintOf(note) == came->second)
            untouched.emplace(note.id, std::move(note));
        else
            ++changed;
        landed.erase(came);
    }
    return untouched;
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

std::optional<size_t> UndoImport(ImportChanges& changes, OpenNoteBook& book, IdCounters& counters,
                                 const std::function<void()>& store, const ReadContext& context, FaultNotice& faults,
                                 TextCache* texts) {
    size_t changed = 0;
    std::unordered_map<int32_t, size_t> left = changes.landed;
    std::unordered_map<int32_t, CNote> untouched = TakeUntouched(left, book, context, faults, changed);
    NoteRemoval removal(book, context, faults, texts);
    DeletedNotes restored{{}, KeptFilesFolder(book.paths)};
    std::vector<CNote> successors;
    for (const CNote& note : changes.replaced) {
        const auto found = untouched.find(note.id);
        if (found == untouched.end())
            continue;
        restored.notes.push_back(note);
        successors.push_back(std::move(found->second));
        untouched.erase(found);
    }
    if (!BringBackWhatNotesName(restored.notes, changes.sources, book, counters, faults))
        return std::nullopt;
    store();
    UnfileNotes(book, successors);
    const LongList lacking = removal.RestoreFiles({changes.withoutFiles, restored.keptFiles});
    const Unrestored failed = removal.RestoreNotes(restored);
    std::vector<CAttachment> dropped;
    for (size_t i = 0; i < successors.size(); ++i) {
        const CNote& successor = successors[i];
        if (failed.unwritten.Contains(successor.id)) {
            FileNotes(book, {&successor, 1});
            left.insert(*changes.landed.find(successor.id));
        } else if (!book.index.HasHiddenCopy(successor.id)) {  // it would show after the next start
            const std::vector<CAttachment> files = UnsharedAttachments(successor, &restored.notes[i]);
            dropped.insert(dropped.end(), files.begin(), files.end());
        }
    }
    LongList added;
    for (const auto& [id, note] : untouched)
        added.AddTail(id);
    removal.DeleteNotes(added, false);
    DeleteAttachmentFiles(WithUnnamedFiles(dropped, "the imported notes", {book.paths, context, faults}),
                          book.paths.Attachments(), faults);
    for (const int32_t id : added) {
        if (book.index.Contains(id))
            left.insert(*changes.landed.find(id));
    }
    changes.landed = std::move(left);
    std::erase_if(changes.withoutFiles, [&](const CNote& note) { return !lacking.Contains(note.id); });
    std::vector<CNote> toComeBack;
    for (CNote& note : changes.replaced) {
        if (changes.landed.contains(note.id))
            toComeBack.push_back(std::move(note));
        else if (failed.withoutFiles.Contains(note.id))
            changes.withoutFiles.push_back(std::move(note));
    }
    changes.replaced = std::move(toComeBack);
    return changed;
}

}  // namespace lore
