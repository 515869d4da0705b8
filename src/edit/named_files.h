#pragma once

#include <vector>

#include "notes/note.h"
#include "notes/notebook_paths.h"
#include "ports/background.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// Where the notes are looked through for the attachment files that they name.
struct NamedFilesSearch {
    const NoteBookPaths& paths;
    const ReadContext& context;
    FaultNotice& faults;
    Background* background = nullptr;  ///< may be null
};

/// Those of the attachments whose files no note names as the note files stand: for notes that have left them. In
/// damaged data, or where files were copied by hand, another note may name the same file. Not one, told, if not every
/// note could be looked at; `whose` are the notes in what is told, such as "the deleted notes". Reads the notes only if
/// there is a file.
std::vector<CAttachment> WithUnnamedFiles(const std::vector<CAttachment>& attachments, const char* whose,
                                          const NamedFilesSearch& search);

}  // namespace lore
