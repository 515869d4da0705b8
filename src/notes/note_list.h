#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/id_table.h"
#include "base/long_list.h"
#include "notes/note_list_entry.h"
#include "notes/search_query.h"

namespace lore {

/// An ordered list of whole notes with the search that it serves: the current note list, and scratch lists.
/// An id is found in constant time; after a change of order or a removal the next look-up costs one walk.
class CNoteList {
public:
    NoteSearch search;

    const std::vector<ListedNote>& Notes() const { return notes_; }
    size_t Count() const { return notes_.size(); }
    bool IsEmpty() const { return notes_.empty(); }
    const CNote& operator[](size_t position) const { return *notes_[position].note; }
    /// The note ready to be shown: search marks that wait are made now.
    const CNote& ShownNote(size_t position);

    /// The first position of a note, -1 if the list doesn't hold it.
    int PositionOf(int32_t id) const;
    bool Contains(int32_t id) const { return PositionOf(id) >= 0; }
    /// Null if the list doesn't hold the note.
    const CNote* Find(int32_t id) const;
    /// The ids in list order, without duplicates.
    LongList GetNoteIDs() const;

    /// Appends, whether or not the list holds the id already.
    void AddNote(CNote note, std::shared_ptr<const Citations> citations = nullptr);
    void AddNote(ListedNote note);
    /// Replaces the content by that of another list, all four parts.
    void Assign(const CNoteList& source) { *this = source; }
    /// Appends to `target` each note of this list that it doesn't hold yet. Gives how many were added.
    size_t AddNotesNotInList(CNoteList& target) const;
    /// Forgets operator, search text and notes.
    void RemoveAll();
    /// True if the list held the note.
    bool RemoveNote(int32_t id);
    /// Removes all these notes in one walk.
    void RemoveNotes(const std::unordered_set<int32_t>& ids);
    /// Puts the saved version of a note in its place. Its flags stay, its search marks go. False if it isn't there.
    bool ReplaceNote(CNote note, std::shared_ptr<const Citations> citations);
    /// Changes the contents of a note in its place; the id must stay. Nothing happens if it isn't there.
    void ChangeNote(int32_t id, const std::function<void(CNote&)>& change);
    /// The texts of a note's sources are other ones now.
    void SetCitations(size_t position, std::shared_ptr<const Citations> citations) {
        notes_[position].citations = std::move(citations);
    }
    /// Takes the entry out and puts it in again so that it stands at `to`; both below Count().
    void MoveNote(size_t from, size_t to);
    /// Replaces all entries, the search stays.
    void SetNotes(std::vector<ListedNote> notes);

    /// Selects the note with this id, which is then no longer newly added, and no other. Gives the id, -1 if it isn't
    /// in the list.
    int32_t SetFocusNote(int32_t id);
    /// The same, but the note stays newly added; -1 for none.
    void Select(int32_t id) { selected_ = id; }
    bool IsSelected(size_t position) const { return notes_[position].Id() == selected_; }
    void MarkAsNew(size_t position) { notes_[position].note->newlyAdded = true; }
    void ClearNewFlags();
    /// Takes the search marks away, those that wait too.
    void ClearMarks();
    /// The note was a result: its marks are made when it is shown. Null takes them away.
    void SetMarks(size_t position, std::shared_ptr<const NoteMarker> marks);

    /// Sorts by a sort number (see sort_order.h).
    void SortNotes(int32_t sortId) { SetOrder(OrderBy(sortId)); }
    /// The order that sorting gives, as positions of this list; empty where it changes nothing. Reads nothing that
    /// showing a note writes, so that another thread may ask while the list is shown.
    std::vector<uint32_t> OrderBy(int32_t sortId) const;
    /// Puts the notes in such an order, which holds each position once; an empty one changes nothing.
    void SetOrder(const std::vector<uint32_t>& order);

private:
    std::vector<ListedNote> notes_;
    int32_t selected_ = -1;
    mutable IDTable<uint32_t> places_;  // one more than the first position of each id, unless stale
    mutable bool stale_ = false;
};

}  // namespace lore
