#pragma once

#include <string>
#include <string_view>

namespace lore {

/// A page in the form that the parser reads as browsers do: UTF-8 without a byte order mark, its first text or element
/// in front, nothing that ends it early, and each character reference whole.
std::string PageForParser(std::string_view bytes);

}  // namespace lore
