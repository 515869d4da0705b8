#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bibliography/author_list.h"
#include "bibliography/source_list.h"
#include "edit/unknown_sources.h"
#include "notes/note.h"

namespace lore {

inline constexpr char kNoSourcesText[] = "<< No Sources Set >>";

/// One source of the note that is being edited.
struct SourceRow {
    CSource source;    ///< a copy with its citation formatted
    std::string key;   ///< of the note's information on the source; empty until the line was opened
    std::string text;  ///< that information
    bool selected = false;
    bool lineOpen = false;  ///< the line is being edited
};

/// The sources of the note that is being edited, in the note's order. Nothing reaches the note before WriteBack.
class SourceRows {
public:
    /// Both outlive the rows and may change between calls.
    SourceRows(const SourceList& sources, const AuthorList& authors) : sources_(sources), authors_(authors) {}

    /// Takes the note's sources with what it says of each. Sources that the NoteBook doesn't know have no row, and
    /// are left out of the note unless its list wasn't read whole; one that stands twice stands once. `infoEnabled`:
    /// the lines can be opened.
    void Fill(const CNote& note, bool infoEnabled);
    /// Gives the note the sources of the rows and the texts of their lines, and what else it has to keep.
    void WriteBack(CNote& note) const;

    const std::vector<SourceRow>& Rows() const { return rows_; }
    bool IsEmpty() const { return rows_.empty(); }
    std::optional<size_t> SelectedRow() const;
    std::optional<size_t> RowOf(int32_t sourceId) const;

    /// Appends a source of the NoteBook unless it stands here already, and renews the copies of all rows. Gives its
    /// row, or nothing for a source that the NoteBook doesn't know.
    std::optional<size_t> AddSource(int32_t sourceId);
    void RemoveSource(size_t row);
    void ClearSources() { rows_.clear(); }
    /// Marks the row of a source and no other. Gives the row.
    std::optional<size_t> SelectRow(int32_t sourceId);
    /// Renews the copies from the NoteBook; a row whose source has gone goes as well. What the note says of a source
    /// that has another GUID now goes on to it.
    void Refresh();

    /// A click on the line of a row. From then on the row has a key. False where the lines are disabled.
    bool OpenLine(size_t row);
    /// What stands in the edit box of a row now; a row whose line was never opened takes nothing.
    void SetText(size_t row, std::string text);
    /// The edit box was left.
    void CloseLine(size_t row) { rows_[row].lineOpen = false; }
    /// What the line shows while it isn't open.
    std::string LineText(size_t row) const;

private:
    CSource Formatted(const CSource& source) const;

    const SourceList& sources_;
    const AuthorList& authors_;
    std::vector<SourceRow> rows_;
    UnknownSources unknown_;
    bool infoEnabled_ = true;
};

}  // namespace lore
