#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "exchange/archive_notes.h"
#include "notes/open_notebook.h"
#include "ports/prompts.h"

namespace lore {

/// How a note of an archive stands to the note of the NoteBook that has the same guid.
enum class ImportStatus { New, Older, Newer, Same };

/// A note of an archive in the list that the user chooses from.
struct ImportRow {
    size_t number = 0;  ///< its place in the archive, from 1
    ArchiveNote entry;
    ImportStatus status = ImportStatus::New;
    int32_t existingID = -1;  ///< of the note that it would replace; -1 for a new note
    bool ticked = true;
    /// Full paths of files that the user has attached to the note here. No other path of the note names a file of this
    /// machine.
    std::unordered_set<std::string> addedFiles;
};

/// Notes of a NoteBook by guid, without their texts.
using NoteHeads = std::unordered_map<std::string, CNote>;

/// The list of an import: every note of the archive held against the NoteBook, and what the user has chosen.
class ImportComparison {
public:
    /// Gives a note of the NoteBook with its sources and their authors.
    using LoadExisting = std::function<std::optional<ArchiveNote>(int32_t id)>;

    /// `existing` holds at least the notes of the NoteBook whose guid the archive has. Of notes with one guid in the
    /// archive, the later ones get a new guid: each note lands.
    ImportComparison(std::vector<ArchiveNote> notes, NoteHeads existing, GuidSource& guids, LoadExisting loadExisting);

    const std::vector<ImportRow>& Rows() const { return rows_; }
    ImportRow& Row(size_t position) { return rows_[position]; }
    /// Positions in Rows of those that the list shows, in order.
    const std::vector<size_t>& Shown() const { return shown_; }

    /// "Show existing (same) notes"; changing it fills the list again, all rows ticked.
    void SetShowSame(bool show);
    bool ShowsSame() const { return showSame_; }
    /// Ticks or clears all rows that the list shows.
    void TickAll(bool ticked);
    /// False if not every note of the NoteBook could be looked at: a row may be new that isn't.
    bool knowsAll = true;
    /// "Display imported notes after import".
    bool displayAfter = false;

    /// The user has changed the note of a row. It keeps its guid; one that was older or the same is newer now.
    void ReplaceNote(size_t position, ArchiveNote entry);
    /// Gives the ticked notes the paths that aren't empty, one for each set.
    void AssignCategories(const std::array<CProCategoryTree, kSetCount>& paths);
    /// The note that a row would replace, or nothing.
    std::optional<ArchiveNote> Existing(size_t position) const;
    /// The same without texts and sources; null for a new note.
    const CNote* ExistingHead(size_t position) const;

    /// Positions of the rows that are shown and ticked.
    std::vector<size_t> Chosen() const;
    /// The answer to OK: false, and told, if nothing is ticked.
    bool Accept(Prompts& prompts) const;

    // The columns of the list.

    /// " 3. - EXISTS (newer)  "
    static std::string StatusText(const ImportRow& row);
    static std::string MainSourceTitle(const ImportRow& row);
    /// The name at a level (from 0) of the path in set 1; empty beyond its end.
    static std::string CategoryName(const ImportRow& row, int level);
    static std::string AttachmentText(const ImportRow& row);

private:
    void Refill();

    std::vector<ImportRow> rows_;
    std::vector<size_t> shown_;
    NoteHeads existing_;
    LoadExisting loadExisting_;
    bool showSame_ = false;
};

/// The name at a level (from 0) of a path; empty beyond its end.
std::string PathName(const CProCategoryTree& path, int level);

}  // namespace lore
