#pragma once

#include <QString>
#include <filesystem>

#include "notes/note.h"
#include "ports/prompts.h"

class QWidget;

namespace lore {

class Theme;

/// Opens an attachment: a picture in a viewer of its own, another file or a web link with the program that the system
/// has for it. A file that isn't there is told, one that might be run as a program asks first, and a link that isn't
/// one of the web is refused. `file` is where its file lies, empty for a link.
void OpenAttachmentFile(const CAttachment& attachment, const std::filesystem::path& file, Prompts& prompts,
                        const Theme& theme, QWidget* parent);

/// Opens an address that the rules allow; any other is refused with a message.
void OpenWebLink(const QString& address, Prompts& prompts);

}  // namespace lore
