#pragma once

#include <string>
#include <string_view>

namespace lore {

/// The parser ends some elements by itself where a paragraph or a table begins in them, though they go on there. Their
/// names have this behind them, so that it doesn't know them; what it does for their own names is done before it.
constexpr char kKeptMark = '_';

/// A page of UTF-8, rewritten where the parser would show what isn't text, or would take it in another way than
/// browsers do.
std::string MendedPage(std::string_view page);

}  // namespace lore
