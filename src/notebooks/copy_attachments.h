#pragma once

#include <filesystem>

#include "notes/note.h"
#include "ports/fault_notice.h"

namespace lore {

/// Copies attachment files from the folder of one NoteBook into that of another one under the next free numbers.
class AttachmentCopies {
public:
    AttachmentCopies(std::filesystem::path from, std::filesystem::path to, FaultNotice& faults);

    /// Gives the attachments of a note their new names. A file that isn't there any more is told; its attachment gets a
    /// name that no file has or will get. False, and told, if a file could not be copied.
    bool CopyFilesOf(CNote& note);
    /// Deletes the files of a note; those that another one names too stay.
    void Drop(const CNote& note, const CNote* keeper = nullptr) const;

private:
    std::filesystem::path from_, to_;
    FaultNotice& faults_;
    int number_;
};

}  // namespace lore
