#pragma once

#include <filesystem>
#include <string>

#include "notes/note.h"

namespace lore {

/// The name under which an attachment's file lies in the attachment folder; empty for a web link, or for a file that
/// was never copied. A name from an archive may hold folders; only its last part counts.
std::string StoredName(const CAttachment& attachment);

/// Where the file of an attachment lies in this folder; empty for a web link, and for one that names no file.
std::filesystem::path AttachmentPath(const CAttachment& attachment, const std::filesystem::path& folder);

}  // namespace lore
