#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "notes/note.h"

namespace lore {

/// The formatted texts of a note's sources, in the note's order; an id that the NoteBook doesn't know has an empty one.
using Citations = std::vector<std::string>;

/// Marks in a rich text what a search has found there.
class NoteMarker {
public:
    virtual ~NoteMarker() = default;
    virtual std::string MarkedRtf(std::string_view rtfText) const = 0;
};

/// A note in a list. Entries are cheap to copy and to move: the texts stand once in memory, and the working values of
/// the note are the same in every list that holds it.
struct ListedNote {
    std::shared_ptr<CNote> note;                     ///< never null
    std::shared_ptr<const Citations> citations;      ///< null for a note without sources
    std::shared_ptr<const NoteMarker> pendingMarks;  ///< makes displayRtf once the note is shown; null otherwise

    int32_t Id() const { return note->id; }
};

}  // namespace lore
