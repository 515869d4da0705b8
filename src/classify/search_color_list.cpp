#include "classify/search_color_list.h"

#include <algorithm>
#include <cstdlib>

#include "classify/note_lists.h"

namespace lore {

namespace {

constexpr int kTolerance = 5;
/// Two colours in one cell are always the same colour, and colours that are the same lie in one cell or in neighbours.
constexpr int kCellSize = kTolerance + 1;
constexpr size_t kNoEntry = static_cast<size_t>(-1);

bool IsNear(unsigned a, unsigned b) {
    return std::abs(static_cast<int>(a) - static_cast<int>(b)) <= kTolerance;
}

/// The key of a colour's cell, moved by some cells in each direction.
uint32_t CellOf(Rgb color, int red = 0, int green = 0, int blue = 0) {
    const auto part = [](unsigned value, int move) { return static_cast<uint32_t>(value / kCellSize + 1 + move); };
    return part(RedOf(color), red) | part(GreenOf(color), green) << 8 | part(BlueOf(color), blue) << 16;
}

}  // namespace

bool IsSameColor(Rgb a, Rgb b) {
    return IsNear(RedOf(a), RedOf(b)) && IsNear(GreenOf(a), GreenOf(b)) && IsNear(BlueOf(a), BlueOf(b));
}

size_t CSearchColorList::FindPosition(Rgb color) const {
    size_t first = kNoEntry;
    for (int neighbour = 0; neighbour < 27; ++neighbour) {
        const auto cell = cells_.find(CellOf(color, neighbour % 3 - 1, neighbour / 3 % 3 - 1, neighbour / 9 - 1));
        if (cell != cells_.end() && IsSameColor(entries_[cell->second].color, color))
            first = std::min(first, cell->second);
    }
    return first;
}

void CSearchColorList::AddNoteToColor(int32_t note, Rgb color) {
    const bool isNew = added_.Add(note);
    const size_t position = FindPosition(color);
    if (position != kNoEntry) {
        if (isNew)
            entries_[position].notes.AddTail(note);
        else
            entries_[position].notes.AddUnique(note);
        return;
    }
    CSearchColor& entry = entries_.emplace_back();
    entry.id = nextID_++;
    entry.color = color;
    entry.notes.AddTail(note);
    cells_.emplace(CellOf(color), entries_.size() - 1);
}

void CSearchColorList::RemoveNote(int32_t note) {
    RemoveNotes(LongList{note});
}

void CSearchColorList::RemoveNotes(const LongList& notes) {
    const size_t gone = std::erase_if(
        entries_, [&](CSearchColor& entry) { return RemoveEach(entry.notes, notes) && entry.notes.IsEmpty(); });
    if (gone > 0)
        Reindex();
}

void CSearchColorList::Reindex() {
    cells_.clear();
    nextID_ = kFirstID;
    for (size_t i = 0; i < entries_.size(); ++i) {
        cells_.emplace(CellOf(entries_[i].color), i);
        nextID_ = std::max(nextID_, entries_[i].id + 1);
    }
}

void CSearchColorList::SetNotesColor(Rgb color, const LongList& notes) {
    if (notes.IsEmpty())
        return;
    // Once the first note has moved, the entry of the new colour can't run empty any more, and so the others may leave
    // their entries together.
    RemoveNote(notes[0]);
    AddNoteToColor(notes[0], color);
    LongList others;
    for (const int32_t note : notes)
        if (note != notes[0])
            others.AddUnique(note);
    RemoveNotes(others);
    for (const int32_t note : others)
        AddNoteToColor(note, color);
}

}  // namespace lore
