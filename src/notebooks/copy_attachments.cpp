#include "notebooks/copy_attachments.h"

#include <string>
#include <utility>

#include "base/file_copy.h"
#include "base/text.h"
#include "edit/attachment_store.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"

namespace lore {

namespace {
constexpr int kNumberOfNone = 0;  // no file gets it, so none ever comes to stand for one that is missing
}  // namespace

AttachmentCopies::AttachmentCopies(std::filesystem::path from, const NoteBookPaths& to, const std::vector<CNote>& notes,
                                   FaultNotice& faults)
    : from_(std::move(from)), to_(to.Attachments()), faults_(faults), number_(HighestAttachmentNumber(to, notes)) {}

bool AttachmentCopies::CopyFilesOf(CNote& note, const std::vector<const CNote*>& existing) {
    bool isDone = true;
    for (CAttachment& attachment : note.attachments) {
        const std::string name = StoredName(attachment);
        if (attachment.type == kWebLink || name.empty())
            continue;
        const std::string_view ending = FileExtension(name);
        attachment.storedFile = NextAttachmentName(to_, number_, ending);
        const FileResult copied = CopyFileAtomically(from_ / name, to_ / attachment.storedFile);
        if (copied.Ok())
            continue;
        std::error_code error;
        const bool isThere = std::filesystem::exists(from_ / name, error) || error;
        const std::string kept = isThere ? std::string() : KeptName(attachment, existing);
        const char* const instead = isThere        ? ""
                                    : kept.empty() ? "; the note names a file that isn't there, as it did"
                                                   : "; the note keeps the file that it has there";
        faults_.Tell({"The attachment \"" + attachment.title + "\" could not be copied" + instead,
                      (from_ / name).string(), copied.Reason()});
        attachment.storedFile = isThere || !kept.empty() ? kept : StoredAttachmentName(kNumberOfNone, ending);
        isDone = isDone && !isThere;
    }
    return isDone;
}

/// Empty if there is none.
std::string AttachmentCopies::KeptName(const CAttachment& attachment, const std::vector<const CNote*>& existing) const {
    for (const CNote* const note : existing) {
        for (const CAttachment& other : note->attachments) {
            std::error_code error;
            if (other.type == attachment.type && other.title == attachment.title &&
                std::filesystem::is_regular_file(AttachmentPath(other, to_), error))
                return StoredName(other);
        }
    }
    return {};
}

void AttachmentCopies::Drop(const CNote& note) const {
    DeleteAttachmentFiles(note.attachments, to_, faults_);
}

}  // namespace lore
