#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "base/id_marks.h"
#include "base/long_list.h"
#include "base/rgb.h"

namespace lore {

/// A border colour with the notes that have it or one nearly alike. Colour 0 stands for the notes without one.
struct CSearchColor {
    int32_t id = -1;  ///< 4 and up
    Rgb color = 0;
    LongList notes;
};

/// True if red, green and blue each differ by at most 5. Not transitive.
bool IsSameColor(Rgb a, Rgb b);

/// The border colours in use, in the order of first appearance.
class CSearchColorList {
public:
    const std::vector<CSearchColor>& Entries() const { return entries_; }
    size_t Count() const { return entries_.size(); }
    bool IsEmpty() const { return entries_.empty(); }

    /// Adds the note to the first entry of the same colour, or to a new one at the end.
    void AddNoteToColor(int32_t note, Rgb color);
    /// Takes a note out of every entry; an entry whose last note went is removed.
    void RemoveNote(int32_t note);
    void RemoveNotes(const LongList& notes);
    /// Moves the notes, one after the other, from where they stand to a colour. An id that stands twice counts once.
    void SetNotesColor(Rgb color, const LongList& notes);

private:
    size_t FindPosition(Rgb color) const;
    void Reindex();

    static constexpr int32_t kFirstID = 4;

    std::vector<CSearchColor> entries_;
    std::unordered_map<uint32_t, size_t> cells_;  // position by colour cell; a cell is so small that it holds one entry
    int32_t nextID_ = kFirstID;                   // one above the highest id
    IDMarks added_;                               // notes that were ever added; no entry holds another note
};

}  // namespace lore
