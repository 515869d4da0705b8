#pragma once

#include <string>
#include <string_view>

#include "rtf/formats.h"

namespace lore {

/// Appends a text to HTML or XML, outside or inside an attribute in double quotes.
void AppendEscaped(std::string& markup, std::string_view text);

/// "#rrggbb".
std::string MarkupColor(const TextColor& color);

/// Whether an address is of a kind that may be opened: http, https, ftp or mailto.
bool HasOpenScheme(std::string_view address);

}  // namespace lore
