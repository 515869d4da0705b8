#pragma once

#include "bibliography/author.h"

namespace lore {

/// Whether a name of the author is UTF-8 with a character beyond ASCII.
bool HasWideName(const CAuthor& author);
/// The author with the three names in UTF-8.
CAuthor AuthorInUtf8(const CAuthor& author);

}  // namespace lore
