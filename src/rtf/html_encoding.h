#pragma once

#include <string>
#include <string_view>

namespace lore {

/// A page as UTF-8. Bytes are read as what they are when they are UTF-8 and the page names no set that needs seven bits
/// alone, otherwise as the page says, otherwise as Windows-1252.
std::string DecodedPage(std::string_view bytes);

}  // namespace lore
