#include "notebooks/notebook_trash.h"

#include <algorithm>

#include "notes/file_faults.h"

namespace lore {

NoteBookTrash::~NoteBookTrash() {
    for (const Entry& entry : entries_) {
        std::error_code error;
        if (!entry.folder.empty())
            std::filesystem::remove_all(entry.folder, error);
        TellFailedWrite(faults_, kTrashStays, entry.folder, FileResult{error.value()});
    }
}

bool NoteBookTrash::Holds(const std::filesystem::path& folder) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.folder == folder; });
}

}  // namespace lore
