#pragma once

#include <string>
#include <string_view>

namespace lore {

/// Appends a text to HTML or XML, outside or inside an attribute in double quotes.
void AppendEscaped(std::string& markup, std::string_view text);

}  // namespace lore
