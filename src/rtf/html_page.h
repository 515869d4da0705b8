#pragma once

#include <string>
#include <string_view>

namespace lore {

/// The parser ends some elements by itself where a paragraph or a table begins in them, though they go on there. Their
/// names have this behind them, so that it doesn't know them; what it does for their own names is done before it.
constexpr char kGoesOn = '_';

/// A page in the form that the parser reads as browsers do: UTF-8 without a byte order mark, its first text or element
/// in front, nothing that ends it early, and each character reference whole. Bytes are read as what they are when they
/// are UTF-8 and the page names no set that needs seven bits alone, otherwise as the page says, otherwise as
/// Windows-1252.
std::string PageForParser(std::string_view bytes);

}  // namespace lore
