#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/long_list.h"
#include "base/rgb.h"
#include "notes/note.h"
#include "notes/open_notebook.h"

namespace lore {

/// Where a note is filed in one category set.
struct CategoryPlace {
    int32_t id = -1;      ///< of the category
    bool isEmpty = true;  ///< the note has no path in this set
};

/// What the picture of a NoteBook takes from one note.
struct NoteBrief {
    int32_t id = -1;
    Rgb color = 0;
    LongList sources;
    std::string keyWords;
    std::array<CategoryPlace, kSetCount> categories;
};

NoteBrief MakeNoteBrief(const CNote& note);

/// Where the note's three paths lead.
std::array<CategoryPlace, kSetCount> CategoryPlaces(const CNote& note);

/// Enters a note into all lists of the picture but the note index. Sources that the NoteBook doesn't know are passed
/// over; a note that has no other counts as one without source.
void FileBrief(OpenNoteBook& book, const NoteBrief& note);

}  // namespace lore
