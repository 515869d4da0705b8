#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// What may be wrong in a NoteBook.
enum class FindingKind {
    NoteTwice,          ///< a copy of a note that another file shows
    NoteInWrongFile,    ///< neither the first source nor the creation day of the note names its file
    SourceMissing,      ///< a note names a source that the NoteBook doesn't hold
    CategoryMissing,    ///< a note is filed under a category that the forest doesn't hold
    AttachmentMissing,  ///< a note names a file that isn't in the attachment folder
    AttachmentUnused,   ///< no note names a file of the attachment folder
    DamagedFile,        ///< a file that breaks off, or holds more than it should
    TextTooLong,        ///< a text over what a field may hold
};

/// A word for each kind that stays the same, such as "note-twice".
std::string_view FindingKindName(FindingKind kind);

struct Finding {
    FindingKind kind;
    std::string file;  ///< full path
    std::string text;  ///< one line for a reader, without the file
};

/// Looks through all files of a NoteBook and changes none. Findings stand by note file in reading order, then the other
/// files, then the attachments. A file that can't be read at all is told to `faults`.
std::vector<Finding> CheckNoteBook(const NoteBookPaths& paths, const ReadContext& context, FaultNotice& faults);

/// The same for the list of NoteBooks and for every NoteBook of a data root, the main one first.
std::vector<Finding> CheckData(const DataPaths& data, const ReadContext& context, FaultNotice& faults);

}  // namespace lore
