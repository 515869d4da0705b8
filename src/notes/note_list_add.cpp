#include "notes/note_list_add.h"

#include <utility>

#include "notes/note_book_loader.h"
#include "notes/note_list_citations.h"
#include "notes/sort_order.h"

namespace lore {

namespace {

void PutInFront(CNoteList& list, const CNoteList& incoming) {
    CNoteList scratch;
    incoming.AddNotesNotInList(scratch);
    list.AddNotesNotInList(scratch);
    list.SetNotes(scratch.Notes());
}

}  // namespace

size_t AddNotes(CNoteList& list, CNoteList incoming, int32_t noteSortID) {
    const size_t before = list.Count();
    list.ClearNewFlags();
    const bool inFront = noteSortID == kAddToTop;
    if (inFront || noteSortID == kAddToBottom)
        incoming.SortNotes(kDateAddedUp);
    if (noteSortID != kNoSort) {
        for (const ListedNote& entry : incoming.Notes())
            entry.note->newlyAdded = inFront || !list.Contains(entry.Id());
    }
    if (inFront)
        PutInFront(list, incoming);
    else
        incoming.AddNotesNotInList(list);
    list.SortNotes(noteSortID);
    return list.Count() - before;
}

void AddSingleNote(CNoteList& list, ListedNote note, int32_t noteSortID) {
    list.ClearNewFlags();
    note.note->newlyAdded = true;
    CNoteList scratch;
    scratch.AddNote(std::move(note));
    if (noteSortID == kAddToTop)
        PutInFront(list, scratch);
    else
        scratch.AddNotesNotInList(list);
    list.SortNotes(noteSortID);
}

CNoteList LoadListedNotes(const OpenNoteBook& book, const LongList& ids, const ReadContext& context,
                          FaultNotice& faults, const std::stop_token& stop) {
    CitationTexts citations(book.sources, book.authors);
    CNoteList list;
    for (CNote& note : FindNotes(book.index, ids, context, faults, stop))
        list.AddNote(citations.Listed(std::move(note)));
    return list;
}

size_t LoadNotesToList(const OpenNoteBook& book, const LongList& ids, int32_t noteSortID, const ReadContext& context,
                       FaultNotice& faults, CNoteList& list, const std::stop_token& stop) {
    LongList missing;
    for (const int32_t id : ids) {
        if (!list.Contains(id))
            missing.AddTail(id);
    }
    return AddNotes(list, LoadListedNotes(book, missing, context, faults, stop), noteSortID);
}

}  // namespace lore
