#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "notes/note_identity.h"
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

/// Which notes show in the files that hold notes of one number.
struct SharedNumbers {
    std::set<std::string> files;                      ///< full paths
    std::unordered_map<int32_t, NoteIdentity> shown;  ///< by the number
};

/// `book` and its files are as they were loaded. Empty, and told, if a file can't be read.
SharedNumbers FindSharedNumbers(const OpenNoteBook& book, const ReadContext& context, FaultNotice& faults);

/// Notes that have come to share a number, as after a copy of files by hand: the one that shows keeps it, and with it
/// all that names it. Each other one gets the next free number, its copies the same, and its record of the sync log and
/// its draft follow. Copies of the note that shows, and files that are damaged, stay as they are. `book` is as it was
/// loaded, and has to be loaded again if a note is given; files may have been mended since. `keep` is asked before a
/// file is written anew, and says whether its old bytes are safe.
std::vector<RenumberedNote> RenumberSharedNotes(const SharedNumbers& shared, OpenNoteBook& book, int& lastNoteID,
                                                const ReadContext& context, FaultNotice& faults,
                                                const std::function<bool(const std::string&)>& keep);

}  // namespace lore
