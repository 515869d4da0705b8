#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bibliography/output_document.h"

namespace lore {

// The forms of a bibliography. Each writer gives the bytes of a whole file.

/// Plain text in UTF-8: entries wrapped at 80 characters with hanging indents, an empty line between them.
std::string BibliographyAsText(const BibliographyDocument& document);
/// A page in UTF-8 that needs no other file.
std::string BibliographyAsHtml(const BibliographyDocument& document);
/// Rich text, in ASCII.
std::string BibliographyAsRtf(const BibliographyDocument& document);
/// An OpenDocument text. Nothing if there was no memory for it.
std::optional<std::string> BibliographyAsOdt(const BibliographyDocument& document);

using BibliographyWriter = std::optional<std::string> (*)(const BibliographyDocument& document);
/// The writer for a file ending without its point, such as "html", ignoring case; null for any other ending.
BibliographyWriter FindBibliographyWriter(std::string_view ending);

}  // namespace lore
