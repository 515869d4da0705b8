#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/file_io.h"
#include "bibliography/source.h"
#include "notes/note.h"
#include "ports/read_context.h"

namespace lore {

/// A note with its sources as they are cited: formatted, in the note's order, ids without a source left out.
struct PrintNote {
    CNote note;
    std::vector<CSource> sources;
};

/// Writes the hand-over file of the print program. An empty list writes nothing.
FileResult SavePrintPreview(const std::filesystem::path& path, const std::vector<PrintNote>& notes);

/// Empties the list and reads a hand-over file; records with an id of 0 or less are no notes. `version`, if given, is
/// the text in front.
FileResult LoadPrintPreview(const std::filesystem::path& path, const ReadContext& context,
                            std::vector<PrintNote>& notes, std::string* version = nullptr);

}  // namespace lore
