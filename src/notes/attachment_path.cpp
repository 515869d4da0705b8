#include "notes/attachment_path.h"

#include "base/text.h"
#include "notes/attachment_kind.h"

namespace lore {

std::string StoredName(const CAttachment& attachment) {
    return attachment.type == kWebLink ? std::string() : std::string(LastPathComponent(attachment.storedFile));
}

std::filesystem::path AttachmentPath(const CAttachment& attachment, const std::filesystem::path& folder) {
    const std::string name = StoredName(attachment);
    const bool isFile = !name.empty() && name != "." && name != "..";
    return isFile ? folder / name : std::filesystem::path();
}

}  // namespace lore
