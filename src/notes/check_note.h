#pragma once

#include <filesystem>
#include <functional>
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

/// Calls `tell` for each text of a note that is over the limit of a record, with a line such as "rich text of 500001
/// bytes, over the limit of 500000".
void TellLongTexts(const CNote& head, const NoteTexts& texts, const std::function<void(const std::string&)>& tell);

/// Adds what is wrong with one note of a file: a head and its texts.
void CheckNote(const CNote& head, const NoteTexts& texts, const std::filesystem::path& file, const KnownThings& known,
               std::vector<Finding>& findings);

}  // namespace lore
