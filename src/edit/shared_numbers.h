#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "notes/open_notebook.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// A note that got another number.
struct RenumberedNote {
    std::string file;  ///< full path
    std::string guid;
    int32_t before = 0, now = 0;
};

/// Notes that have come to share a number, as after a copy of files by hand: the one that shows keeps it, and with it
/// all that names it. Each other one gets the next free number, its copies the same, and its record of the sync log and
/// its draft follow. Copies of the note that shows, and files that are damaged, stay as they are. `book` is as it was
/// loaded, and has to be loaded again if a note is given. `keep` is asked before a file is written anew, and says
/// whether its old bytes are safe.
std::vector<RenumberedNote> RenumberSharedNotes(OpenNoteBook& book, int& lastNoteID, const ReadContext& context,
                                                FaultNotice& faults,
                                                const std::function<bool(const std::string&)>& keep);

}  // namespace lore
