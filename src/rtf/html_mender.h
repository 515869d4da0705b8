#pragma once

#include <string>
#include <string_view>

namespace lore {

/// The parser ends some elements by itself where a paragraph or a table begins in them, though they go on there. Their
/// names have this behind them, so that it doesn't know them; what it does for their own names is done before it.
constexpr char kGoesOn = '_';

/// A page of UTF-8 in which what the parser would show, or takes in another way than browsers do, stands as it reads
/// it.
std::string MendedPage(std::string_view page);

}  // namespace lore
