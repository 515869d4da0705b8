#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "bibliography/new_author.h"
#include "exchange/archive_notes.h"
#include "notes/note_book_loader.h"
#include "notes/open_notebook.h"

namespace lore {

/// Brings sources from elsewhere, with their authors and user-defined types, into the lists of a NoteBook. A source
/// that is known by its GUID gives its id only; nothing of it is updated. Nothing is written.
class SourceMerge {
public:
    SourceMerge(OpenNoteBook& book, IdCounters& counters) : book_(book), counters_(counters) {}

    /// Adds the types that sources not known yet bring and the NoteBook lacks. Before the first Merge, for all sources.
    void AddTypes(const std::vector<CSource>& sources);
    /// Numbers the types once all are there.
    void NumberTypes();
    /// Gives the id that a source has in the NoteBook, adding it if it is missing.
    int32_t Merge(const CSource& source);
    /// The same for all sources of a note, whose ids it then gets.
    void MergeSourcesOf(ArchiveNote& entry);
    /// Gives the id of the author of the same name, adding it under the next number if there is none.
    int32_t MergeAuthor(const CAuthor& author);

    bool HasNewTypes() const { return newTypes_; }
    bool HasNewAuthors() const { return newAuthors_; }
    bool HasNewSources() const { return newSources_; }
    /// A source or an author found no free id: nothing of it may be stored.
    bool RanOut() const { return ranOut_; }

private:
    void LinkType(CSource& source) const;

    OpenNoteBook& book_;
    IdCounters& counters_;
    std::optional<AuthorIDs> authorIDs_;  ///< once an author comes in
    bool newTypes_ = false, newAuthors_ = false, newSources_ = false, ranOut_ = false;
};

/// Adds to the information of an imported note what the existing note alone knows of sources that both have.
void KeepSourceInfo(ArchiveNote& imported, const CNote& existing);

}  // namespace lore
