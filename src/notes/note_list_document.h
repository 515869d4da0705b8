#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "notes/board_options.h"
#include "notes/print_preview.h"
#include "rtf/document.h"

namespace lore {

/// Gives the picture of an attached image file; nothing if it can't be shown.
using PictureOfAttachment = std::function<std::optional<Picture>(const CAttachment& attachment)>;

/// Notes one below the other as one rich text, for paper and for files: each with its text, pictures, sources,
/// categories and key words in the order of its card, as far as the options show them.
Document ComposeNoteList(const std::vector<PrintNote>& notes, const BoardOptions& options,
                         const PictureOfAttachment& pictureOf);

/// The plain text of a rich text in UTF-8, with the marks of its lists.
std::string DocumentAsText(const Document& document);

}  // namespace lore
