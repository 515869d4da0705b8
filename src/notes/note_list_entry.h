#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "notes/note.h"

namespace lore {

/// The formatted texts of a note's sources, in the note's order. An id that the NoteBook doesn't know has none, so that
/// places here aren't those of the ids.
using Citations = std::vector<std::string>;

/// Marks in a rich text what a search has found there.
class NoteMarker {
public:
    virtual ~NoteMarker() = default;
    virtual std::string MarkedRtf(std::string_view rtfText) const = 0;
};

/// A note in a list. Entries are cheap to copy and to move: the texts stand once in memory, and the working values of
/// the note are the same in every list that holds it.
class ListedNote {
public:
    ListedNote(std::shared_ptr<CNote> listed, std::shared_ptr<const Citations> texts,
               std::shared_ptr<const NoteMarker> marker = nullptr)
        : note(std::move(listed)), citations(std::move(texts)), pendingMarks(std::move(marker)), id_(note->id) {}

    std::shared_ptr<CNote> note;                     ///< never null
    std::shared_ptr<const Citations> citations;      ///< null for a note without known sources
    std::shared_ptr<const NoteMarker> pendingMarks;  ///< makes displayRtf once the note is shown; null otherwise

    /// The note's id, which stays while it is listed. It stands here too, since walks over long lists would wait for
    /// the memory of each note.
    int32_t Id() const { return id_; }

private:
    int32_t id_;
};

}  // namespace lore
