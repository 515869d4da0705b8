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

AttachmentCopies::AttachmentCopies(std::filesystem::path from, std::filesystem::path to, FaultNotice& faults)
    : from_(std::move(from)), to_(std::move(to)), faults_(faults), number_(HighestAttachmentNumber(to_)) {}

bool AttachmentCopies::CopyFilesOf(CNote& note) {
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
        faults_.Tell({"The attachment \"" + attachment.title + "\" could not be copied" +
                          (isThere ? "" : "; the note names a file that isn't there, as it did"),
                      (from_ / name).string(), copied.Reason()});
        attachment.storedFile = isThere ? std::string() : StoredAttachmentName(kNumberOfNone, ending);
        isDone = isDone && !isThere;
    }
    return isDone;
}

void AttachmentCopies::Drop(const CNote& note, const CNote* keeper) const {
    DeleteAttachmentFiles(UnsharedAttachments(note, keeper), to_, faults_);
}

}  // namespace lore
