#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "notes/note.h"

namespace lore {

/// The formatted text of a source. Copies of it share the text, as do the notes of a source.
class CitationText {
public:
    CitationText(std::string text);
    operator std::string_view() const { return shared_->text; }
    /// In small letters, as texts are sorted.
    std::string_view Folded() const { return shared_->folded; }
    /// The same for all copies of a text.
    const void* Identity() const { return shared_.get(); }

private:
    struct Shared {
        std::string text, folded;
    };
    std::shared_ptr<const Shared> shared_;
};

/// The texts of a note's sources, in the note's order. An id that the NoteBook doesn't know has none, so that places
/// here aren't those of the ids.
using Citations = std::vector<CitationText>;

/// Marks in a rich text what a search has found there.
class NoteMarker {
public:
    virtual ~NoteMarker() = default;
    virtual std::string MarkedRtf(std::string_view rtfText) const = 0;
};

/// The path that categories sort by: that of the first set whose path begins with an id above 0. Null if there is none.
const CProCategoryTree* FindSortPath(const CNote& note);
std::shared_ptr<const CProCategoryTree> CopySortPath(const CNote& note);

/// A note in a list. Entries are cheap to copy and to move: the texts stand once in memory, and the working values of
/// the note are the same in every list that holds it.
class ListedNote {
public:
    ListedNote(std::shared_ptr<CNote> listed, std::shared_ptr<const Citations> texts,
               std::shared_ptr<const CProCategoryTree> path)
        : note(std::move(listed)),
          citations(std::move(texts)),
          sortPath(std::move(path)),
          id_(note->id),
          created_(note->dateCreated) {}
    /// With a copy of the note's path.
    ListedNote(const std::shared_ptr<CNote>& listed, std::shared_ptr<const Citations> texts)
        : ListedNote(listed, std::move(texts), CopySortPath(*listed)) {}

    std::shared_ptr<CNote> note;                 ///< never null
    std::shared_ptr<const Citations> citations;  ///< null for a note without known sources
    /// What the note is sorted by under an order by category, here for the same reason as Id(); null if it is filed
    /// nowhere. Notes that are filed alike may share it.
    std::shared_ptr<const CProCategoryTree> sortPath;
    std::shared_ptr<const NoteMarker> pendingMarks;  ///< makes displayRtf once the note is shown; null otherwise

    /// The note may be filed elsewhere now. A path that is the same stays shared.
    void RenewSortPath();

    // The note's id and when it was created, which stay while it is listed. They stand here too, since walks over long
    // lists would wait for the memory of each note.
    int32_t Id() const { return id_; }
    const DateTime& Created() const { return created_; }

private:
    int32_t id_;
    DateTime created_;
};

/// For walks over long lists that read this part of each note: has the memory of one some places behind `at` fetched.
template <typename Part>
void FetchAhead(std::span<const ListedNote> notes, size_t at, Part CNote::*part) {
    constexpr size_t kPlaces = 16;
    if (at + kPlaces < notes.size())
        __builtin_prefetch(&(notes[at + kPlaces].note.get()->*part));
}

/// The same for walks that read the sources of each note: first the list of their texts, nearer by what stands in it.
inline void FetchCitationsAhead(std::span<const ListedNote> notes, size_t at) {
    constexpr size_t kPlaces = 8;
    if (at + 2 * kPlaces >= notes.size())
        return;
    __builtin_prefetch(notes[at + 2 * kPlaces].citations.get());
    if (const Citations* const nearer = notes[at + kPlaces].citations.get())
        __builtin_prefetch(nearer->data());
}

}  // namespace lore
