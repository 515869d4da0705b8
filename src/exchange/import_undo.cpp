#include "exchange/import_undo.h"

#include <algorithm>
#include <functional>
#include <string>
#include <unordered_set>

#include "edit/attachment_store.h"
#include "edit/note_removal.h"
#include "exchange/bring_back.h"
#include "notes/check_note.h"
#include "notes/note_file.h"
#include "notes/note_filing.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

/// The notes of the import that are still as they came in, by id; `changed` counts the others.
std::unordered_map<int32_t, CNote> UntouchedNotes(const ImportChanges& changes, const OpenNoteBook& book,
                                                  const ReadContext& context, FaultNotice& faults, size_t& changed) {
    LongList ids;
    for (const auto& [id, fingerprint] : changes.landed)
        ids.AddTail(id);
    std::unordered_map<int32_t, CNote> untouched;
    for (CNote& note : FindNotes(book.index, ids, context, faults)) {
        if (FingerprintOf(note) == changes.landed.at(note.id))
            untouched.emplace(note.id, std::move(note));
        else
            ++changed;
    }
    return untouched;
}

/// Deletes the files that the note names and the one in its place doesn't.
void DropFilesOf(const CNote& note, const CNote& successor, const NoteBookPaths& paths, FaultNotice& faults) {
    std::unordered_set<std::string> kept;
    for (const CAttachment& attachment : successor.attachments)
        kept.insert(StoredName(attachment));
    std::vector<CAttachment> dropped = note.attachments;
    std::erase_if(dropped, [&](const CAttachment& attachment) { return kept.contains(StoredName(attachment)); });
    DeleteAttachmentFiles(dropped, paths.Attachments(), faults);
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

std::optional<size_t> UndoImport(const ImportChanges& changes, OpenNoteBook& book, IdCounters& counters,
                                 const std::function<void()>& store, const ReadContext& context, FaultNotice& faults,
                                 TextCache* texts) {
    size_t changed = 0;
    std::unordered_map<int32_t, CNote> untouched = UntouchedNotes(changes, book, context, faults, changed);
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
    const LongList failed = removal.RestoreNotes(restored);
    for (size_t i = 0; i < successors.size(); ++i) {
        const CNote& successor = successors[i];
        if (failed.Contains(successor.id))
            FileNotes(book, {&successor, 1});
        else if (!book.index.HasHiddenCopy(successor.id))  // it would show after the next start
            DropFilesOf(successor, restored.notes[i], book.paths, faults);
    }
    LongList added;
    for (const auto& [id, note] : untouched)
        added.AddTail(id);
    removal.DeleteNotes(added, false);
    return changed;
}

}  // namespace lore
