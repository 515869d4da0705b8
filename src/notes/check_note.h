#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "bibliography/source_list.h"
#include "classify/category_list.h"
#include "notes/check_finding.h"
#include "notes/note.h"
#include "notes/note_file.h"

namespace lore {

/// What the notes of a NoteBook may name.
struct KnownThings {
    SourceList sources;
    CProCategoryList categories;
    bool hasCategories = false;         ///< they could be read; without a file the notes themselves make the forest
    std::set<std::string> attachments;  ///< file names in the attachment folder
};

/// Adds what is wrong with one note of a file: a head and its texts.
void CheckNote(const CNote& head, const NoteTexts& texts, const std::filesystem::path& file, const KnownThings& known,
               std::vector<Finding>& findings);

}  // namespace lore
