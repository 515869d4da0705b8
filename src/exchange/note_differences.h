#pragma once

#include <string>
#include <vector>

#include "exchange/archive_notes.h"
#include "exchange/line_differences.h"

namespace lore {

/// One line of the list: what differs, and how each note has it.
struct DifferenceRow {
    std::string name, importText, databaseText;
    bool operator==(const DifferenceRow&) const = default;
};

/// What the window of differences shows of a note of an archive and the note of the NoteBook with its guid.
struct ImportDifferences {
    std::string head;  ///< how much older or newer the note of the archive is; empty if neither
    std::vector<DifferenceRow> rows;
    TextDifferences
        text;  ///< ranges of the plain text of the archive's note; the other words are those of the NoteBook's
    std::string importRtf;  ///< the rich text of the archive's note with the background on the lines that differ
    std::string databaseRtf;
};

/// Both notes come with their sources, and these with their authors.
ImportDifferences CompareForImport(const ArchiveNote& imported, const ArchiveNote& database);

}  // namespace lore
