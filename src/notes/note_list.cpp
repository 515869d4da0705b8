#include "notes/note_list.h"

#include <algorithm>
#include <span>
#include <utility>

#include "base/id_marks.h"
#include "notes/sort_order.h"

namespace lore {

namespace {

/// What stays as it is isn't written: other threads may be reading it.
void Set(bool& flag, bool value) {
    if (flag != value)
        flag = value;
}

}  // namespace

const CNote& CNoteList::ShownNote(size_t position) {
    ListedNote& entry = notes_[position];
    if (entry.pendingMarks) {
        entry.note->displayRtf = entry.pendingMarks->MarkedRtf(entry.note->rtfText);
        entry.pendingMarks.reset();
    }
    return *entry.note;
}

int CNoteList::PositionOf(int32_t id) const {
    if (stale_) {
        places_.Clear();
        for (size_t i = notes_.size(); i-- > 0;)
            places_[notes_[i].Id()] = static_cast<uint32_t>(i + 1);
        stale_ = false;
    }
    return static_cast<int>(places_.ValueOf(id)) - 1;
}

const CNote* CNoteList::Find(int32_t id) const {
    const int position = PositionOf(id);
    return position < 0 ? nullptr : notes_[static_cast<size_t>(position)].note.get();
}

LongList CNoteList::GetNoteIDs() const {
    IDMarks met;
    std::vector<int32_t> ids;
    ids.reserve(notes_.size());
    for (const ListedNote& entry : notes_) {
        if (met.Add(entry.Id()))
            ids.push_back(entry.Id());
    }
    return LongList(std::move(ids));
}

void CNoteList::AddNote(CNote note, std::shared_ptr<const Citations> citations) {
    AddNote({std::make_shared<CNote>(std::move(note)), std::move(citations)});
}

void CNoteList::AddNote(ListedNote note) {
    if (!stale_) {
        if (uint32_t& place = places_[note.Id()]; place == 0)
            place = static_cast<uint32_t>(notes_.size() + 1);
    }
    notes_.push_back(std::move(note));
}

size_t CNoteList::AddNotesNotInList(CNoteList& target) const {
    const size_t before = target.Count();
    for (const ListedNote& entry : notes_) {
        if (!target.Contains(entry.Id()))
            target.AddNote(entry);
    }
    return target.Count() - before;
}

void CNoteList::RemoveAll() {
    search.searchOperator = kNoOperator;
    search.searchText.clear();
    SetNotes({});
}

bool CNoteList::RemoveNote(int32_t id) {
    const int position = PositionOf(id);
    if (position < 0)
        return false;
    notes_.erase(notes_.begin() + position);
    stale_ = true;
    return true;
}

void CNoteList::RemoveNotes(const std::unordered_set<int32_t>& ids) {
    std::erase_if(notes_, [&](const ListedNote& entry) { return ids.contains(entry.Id()); });
    stale_ = true;
}

bool CNoteList::ReplaceNote(CNote note, std::shared_ptr<const Citations> citations) {
    const int position = PositionOf(note.id);
    if (position < 0)
        return false;
    ListedNote& entry = notes_[static_cast<size_t>(position)];
    note.newlyAdded = entry.note->newlyAdded;
    note.displayRtf.clear();
    entry = {std::make_shared<CNote>(std::move(note)), std::move(citations), std::move(entry.sortPath)};
    entry.RenewSortPath();
    return true;
}

void CNoteList::ChangeNote(int32_t id, const std::function<void(CNote&)>& change) {
    const int position = PositionOf(id);
    if (position < 0)
        return;
    ListedNote& entry = notes_[static_cast<size_t>(position)];
    change(*entry.note);
    entry.RenewSortPath();
}

void CNoteList::MoveNote(size_t from, size_t to) {
    const auto begin = notes_.begin();
    const auto at = [&](size_t position) { return begin + static_cast<std::ptrdiff_t>(position); };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
    stale_ = true;
}

void CNoteList::SetNotes(std::vector<ListedNote> notes) {
    notes_ = std::move(notes);
    stale_ = true;
}

int32_t CNoteList::SetFocusNote(int32_t id) {
    const int position = PositionOf(id);
    Select(position < 0 ? -1 : id);
    if (position >= 0)
        Set(notes_[static_cast<size_t>(position)].note->newlyAdded, false);
    return selected_;
}

void CNoteList::ClearNewFlags() {
    for (size_t i = 0; i < notes_.size(); ++i) {
        FetchAhead(std::span(std::as_const(notes_)), i, &CNote::newlyAdded);
        Set(notes_[i].note->newlyAdded, false);
    }
}

void CNoteList::ClearMarks() {
    for (size_t i = 0; i < notes_.size(); ++i)
        SetMarks(i, nullptr);
}

void CNoteList::SetMarks(size_t position, std::shared_ptr<const NoteMarker> marks) {
    ListedNote& entry = notes_[position];
    if (!entry.note->displayRtf.empty())
        entry.note->displayRtf.clear();
    entry.pendingMarks = std::move(marks);
}

std::vector<uint32_t> CNoteList::OrderBy(int32_t sortId) const {
    if (!IsSortingId(sortId))
        return {};
    std::vector<uint32_t> order = SortedOrder(notes_, sortId);
    if (std::is_sorted(order.begin(), order.end()))
        order.clear();
    return order;
}

void CNoteList::SetOrder(const std::vector<uint32_t>& order) {
    if (order.size() != notes_.size())
        return;
    // Each ring of places that hand on to the next one, in place: a save moves few notes far, and the others by one.
    std::vector<bool> set(notes_.size());
    for (uint32_t first = 0; first < notes_.size(); ++first) {
        if (set[first] || order[first] == first)
            continue;
        ListedNote held = std::move(notes_[first]);
        uint32_t to = first;
        for (; order[to] != first; to = order[to]) {
            notes_[to] = std::move(notes_[order[to]]);
            set[to] = true;
        }
        notes_[to] = std::move(held);
        set[to] = true;
    }
    stale_ = true;
}

}  // namespace lore
