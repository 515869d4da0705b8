#pragma once

#include <filesystem>

#include "base/text.h"
#include "notes/attachment_kind.h"
#include "notes/note.h"
#include "notes/notebook_paths.h"

namespace lore {

/// Where the file of an attachment lies; empty for a web link and for one that names no file. A name from an archive
/// may hold folders; only its last part counts.
inline std::filesystem::path AttachmentPathOf(const NoteBookPaths& paths, const CAttachment& attachment) {
    const std::string_view name = LastPathComponent(attachment.storedFile);
    if (attachment.type == kWebLink || name.empty() || name == "." || name == "..")
        return {};
    return paths.Attachments() / name;
}

}  // namespace lore
