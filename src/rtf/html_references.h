#pragma once

#include <string>
#include <string_view>

namespace lore {

/// A page of UTF-8 whose character references are written as numbers where the parser would read them in another way
/// than browsers do: numbers of control characters, names that it doesn't know, names without their semicolon.
std::string WithWholeReferences(std::string_view page);

}  // namespace lore
