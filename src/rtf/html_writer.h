#pragma once

#include <string>
#include <string_view>

#include "rtf/document.h"

namespace lore {

/// A page in UTF-8 that needs no other file: pictures stand within it. Only PNG and JPEG pictures are shown; links are
/// alive if they are of a kind that may be opened (http, https, ftp, mailto). Lengths are pixels, 96 to the inch.
std::string WriteHtml(const Document& document, std::string_view title);

/// The width and height of a picture on paper, in twips, at least 15.
struct PictureTwips {
    int32_t width = 0;
    int32_t height = 0;
};
PictureTwips SizeOnPaper(const Picture& picture);

/// The name of a run's font; empty if the document names none.
std::string_view FontNameOf(const Document& document, const CharFormat& format);
/// The address that a run leads to; empty for none, and for one that must not be opened.
std::string_view SafeLinkOf(const Document& document, const CharFormat& format);

}  // namespace lore
