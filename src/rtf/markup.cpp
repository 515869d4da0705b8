#include "rtf/markup.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/text.h"

namespace lore {

void AppendEscaped(std::string& markup, std::string_view text) {
    for (const char c : text) {
        switch (c) {
            case '&':
                markup += "&amp;";
                break;
            case '<':
                markup += "&lt;";
                break;
            case '>':
                markup += "&gt;";
                break;
            case '"':
                markup += "&quot;";
                break;
            default:
                markup += c;
        }
    }
}

std::string MarkupColor(const TextColor& color) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", color.red, color.green, color.blue);
    return text.data();
}

bool HasOpenScheme(std::string_view address) {
    constexpr std::array<std::string_view, 4> kSchemes = {"http", "https", "ftp", "mailto"};
    const size_t colon = address.find(':');
    return colon != std::string_view::npos &&
           std::any_of(kSchemes.begin(), kSchemes.end(),
                       [&](std::string_view scheme) { return EqualNoCase(address.substr(0, colon), scheme); });
}

}  // namespace lore
