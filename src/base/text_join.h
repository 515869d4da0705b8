#pragma once

#include <string>
#include <string_view>

namespace lore {

/// Whether a text is UTF-8 with a character beyond ASCII.
bool IsWideText(std::string_view bytes);

/// One text after the other. Where one is UTF-8 and the other Windows-1252 with characters beyond ASCII, their bytes
/// would not read as one text: both then get the form that FromUtf8 gives the whole.
std::string JoinTexts(std::string_view first, std::string_view second);

}  // namespace lore
