#include "notes/note_filing.h"

#include "notes/note_brief.h"

namespace lore {

namespace {

/// One walk a source, however many of its notes go.
void UntieSources(SourceList& sources, std::span<const CNote> notes, const std::unordered_set<int32_t>& ids) {
    std::unordered_set<int32_t> done;
    for (const CNote& note : notes) {
        for (const int32_t id : note.sources) {
            CSource* const source = done.insert(id).second ? sources.FindSourceByID(id) : nullptr;
            if (source)
                source->NoteIDs = WithoutIDs(source->NoteIDs, ids);
        }
    }
}

}  // namespace

LongList WithoutIDs(const LongList& list, const std::unordered_set<int32_t>& ids) {
    std::vector<int32_t> kept;
    for (const int32_t id : list) {
        if (!ids.contains(id))
            kept.push_back(id);
    }
    return LongList(std::move(kept));
}

void UnfileNotes(OpenNoteBook& book, std::span<const CNote> notes) {
    LongList ids;
    std::unordered_set<int32_t> set;
    for (const CNote& note : notes) {
        if (set.insert(note.id).second)
            ids.AddTail(note.id);
    }
    if (ids.IsEmpty())
        return;
    book.categories.RemoveNotes(ids, kAllSets);
    UntieSources(book.sources, notes, set);
    book.notesWithoutSource = WithoutIDs(book.notesWithoutSource, set);
    book.keyWords.RemoveNotes(ids);
    book.colors.RemoveNotes(ids);
}

void UnfileNote(OpenNoteBook& book, const CNote& note) {
    book.categories.RemoveNote(note.id, kAllSets);
    for (const int32_t source : note.sources)
        book.sources.RemoveNoteID(source, note.id);
    book.notesWithoutSource.RemoveValue(note.id);
    book.keyWords.RemoveNote(note.id);
    book.colors.RemoveNote(note.id);
}

void FileNotes(OpenNoteBook& book, std::span<const CNote> notes) {
    for (const CNote& note : notes)
        FileBrief(book, MakeNoteBrief(note));
    book.keyWords.SortKeyWords();
}

void FileNote(OpenNoteBook& book, const CNote& note) {
    FileNotes(book, {&note, 1});
}

}  // namespace lore
