#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bibliography/source_list.h"
#include "notes/print_preview.h"

namespace lore {

/// What another program handed over: a bibliography or a list of notes.
struct HandOver {
    bool isBibliography = false;
    SourceList sources;
    std::vector<PrintNote> notes;
    std::string problem;  ///< in words, with what to do; empty if all of it could be read
};

/// Reads a hand-over file, whose kind its beginning tells. A file that isn't there, that is none or that breaks off is
/// a problem.
HandOver ReadHandOver(const std::filesystem::path& path, const ReadContext& context);

}  // namespace lore
