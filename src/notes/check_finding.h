#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/record_file.h"

namespace lore {

/// What may be wrong in a NoteBook.
enum class FindingKind {
    NoteTwice,          ///< a copy of a note that another file shows
    NumberShared,       ///< a note that another one of the same number hides
    NoteInWrongFile,    ///< neither the first source nor the creation day of the note names its file
    SourceMissing,      ///< a note names a source that the NoteBook doesn't hold
    CategoryMissing,    ///< a note is filed under a category that the forest doesn't hold
    AttachmentMissing,  ///< a note names a file that isn't in the attachment folder
    AttachmentUnused,   ///< no note names a file of the attachment folder
    DamagedFile,        ///< a file that breaks off, or holds more than its records show; missing authors that are named
    TextTooLong,        ///< a text over what a field may hold
    NoteBookUnlisted,   ///< a folder of notes that the list of NoteBooks doesn't name
    NoteBookTwice,      ///< two NoteBooks of the list, or one and the main one, have one folder
};

/// A word for each kind that stays the same, such as "note-twice".
std::string_view FindingKindName(FindingKind kind);

/// One thing that is wrong, with the file that has it.
struct Finding {
    FindingKind kind;
    std::string file;  ///< full path
    std::string text;  ///< one line for a reader, without the file
};

/// Adds what is wrong with a record file as a whole: damage, and a text over its limit.
void AddFileFindings(const std::filesystem::path& file, const RecordFileState& state, std::vector<Finding>& findings);
/// " of N bytes, over the limit of M", after what a text is; empty for one within it.
std::string OverLimit(size_t bytes);

}  // namespace lore
