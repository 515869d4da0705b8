#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "notes/note.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"

namespace lore {

/// Copies attachment files from the folder of one NoteBook into that of another one under the next free numbers.
class AttachmentCopies {
public:
    /// `notes` are those of the NoteBook `to`.
    AttachmentCopies(std::filesystem::path from, const NoteBookPaths& to, const std::vector<CNote>& notes,
                     FaultNotice& faults);

    /// Gives the attachments of a note their new names. A file that isn't there any more is told; its attachment keeps
    /// the file that one of the `existing` notes, which the copy may replace, has under its title and type, or else
    /// gets a name that no file has or will get. False, and told, if a file could not be copied.
    bool CopyFilesOf(CNote& note, const std::vector<const CNote*>& existing);
    /// Deletes the files of a note.
    void Drop(const CNote& note) const;

private:
    std::string KeptName(const CAttachment& attachment, const std::vector<const CNote*>& existing) const;

    std::filesystem::path from_, to_;
    FaultNotice& faults_;
    int number_;
};

}  // namespace lore
