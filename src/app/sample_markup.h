#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "rtf/document.h"

namespace lore {

/// The bytes of a picture by the name that a text uses; empty if there is none, which leaves the picture out.
using PictureBytes = std::function<std::string_view(std::string_view name)>;

struct PixelSize {
    int32_t width = 0;
    int32_t height = 0;
};

/// The size that a PNG file states; nothing if the bytes aren't PNG.
std::optional<PixelSize> PngSize(std::string_view bytes);

/// Rich text from a title, which becomes the first paragraph, and a text in the markup of the sample files (UTF-8):
///
///   # heading                     a bold line
///   - item, 1. item               lists
///   | cell | cell |               a table; its first row is bold if a row of "---" follows
///   > quotation                   indented; each line stays a line
///   >> quotation                  the same from right to left
///   ![title](name)                a PNG picture
///   anything else                 paragraphs, parted by empty lines
///
/// Within lines: *italic* **bold** __underline__ [text](address), and a backslash before a character that is meant as
/// it stands.
Document ReadSampleMarkup(std::string_view title, std::string_view text, const PictureBytes& pictures);

}  // namespace lore
