#pragma once

#include <filesystem>
#include <optional>

#include "notes/note.h"
#include "notes/notebook_paths.h"
#include "rtf/document.h"

namespace lore {

/// The picture of an attached image file at its size on a card, at most `widest` pixels wide. Nothing for a file that
/// isn't there or is no image.
std::optional<Picture> AttachedPicture(const NoteBookPaths& paths, const CAttachment& attachment, int widest);

/// Turns the pictures of a document into PNG and JPEG, the kinds that every form can hold, as far as they can be read,
/// and makes those that are wider smaller.
void MakePicturesPlain(Document& document, int widest);

}  // namespace lore
