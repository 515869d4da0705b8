#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "notes/note.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// An attachment in an editor.
struct EditedAttachment {
    CAttachment record;
    std::string bitmap;     ///< bytes of a picture that the text control holds in memory; empty for a file or a link
    bool isToldOf = false;  ///< an earlier save has told that the file could not be copied
};

/// The attachments of a note, ready to be edited.
std::vector<EditedAttachment> EditAttachments(const std::vector<CAttachment>& records);
std::vector<CAttachment> AttachmentRecords(const std::vector<EditedAttachment>& attachments);

/// The next free stored name: "0000012.pdf" for the number 12 and a source that ends in "pdf"; the extension keeps its
/// case, and without one the name ends in the point. An extension of more than 100 bytes is left out, since a file
/// system may not take the name, and so are colons and control characters: archives can't carry them in a name.
std::string StoredAttachmentName(int number, std::string_view extension);
/// The stored name with the next number that no file of the folder has in this name; `number` moves on to it. A folder
/// that can't be listed has given too low a number, and no file may be replaced.
std::string NextAttachmentName(const std::filesystem::path& folder, int& number, std::string_view extension);
/// The folder beside a NoteBook's attachments where files of deleted notes wait. On disk; never change.
inline constexpr char kKeptFilesName[] = "Deleted";
/// The largest number that begins the name of a file in the attachment folder, of one that may come back to it, or of
/// one that a note names: where that file is missing, the note would take another one for it. 0 for none. `notes` are
/// all of the NoteBook.
int HighestAttachmentNumber(const NoteBookPaths& paths, const std::vector<CNote>& notes);
/// The same, with the notes as they stand in their files; what can't be read is passed over.
int HighestAttachmentNumber(const NoteBookPaths& paths, const ReadContext& context);

/// Copies the files of new attachments into the attachment folder of a NoteBook under the next free numbers, in list
/// order, and empties their source paths. Web links keep their address. A file that can't be copied is told, and its
/// attachment stays as it was, so that the next save tries again; one that was told of and is still missing is passed
/// over. Gives how many failed. The notes are read if there
/// is something to copy.
size_t CopyInNewAttachments(std::vector<EditedAttachment>& attachments, const NoteBookPaths& paths,
                            const ReadContext& context, FaultNotice& faults);

/// Deletes the files of attachments; one that isn't there is no failure.
void DeleteAttachmentFiles(const std::vector<CAttachment>& attachments, const std::filesystem::path& folder,
                           FaultNotice& faults);

/// The attachments of a note whose files another one doesn't name; all of them if there is no other one.
std::vector<CAttachment> UnsharedAttachments(const CNote& note, const CNote* other);

}  // namespace lore
