#include "cli/shown_text.h"

#include "base/text.h"

namespace lore {

namespace {

constexpr char32_t kDelete = 0x7f;
constexpr char32_t kLastControl = 0x9f;

bool IsControl(char32_t c) {
    return c < ' ' || (c >= kDelete && c <= kLastControl);
}

void AppendEscape(std::string& text, char32_t control) {
    constexpr char kDigits[] = "0123456789abcdef";
    text.append("\\x").append(1, kDigits[control >> 4]).append(1, kDigits[control & 15]);
}

std::string ShownBut(std::string_view bytes, bool keepLines) {
    const std::u32string text = ToCodePoints(bytes);
    std::string shown;
    shown.reserve(bytes.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        const bool isLine = c == '\n' || c == '\t' || (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n');
        if (IsControl(c) && !(keepLines && isLine))
            AppendEscape(shown, c);
        else
            AppendUtf8(shown, c);
    }
    return shown;
}

}  // namespace

std::string Shown(std::string_view bytes) {
    return ShownBut(bytes, false);
}

std::string ShownLines(std::string_view bytes) {
    return ShownBut(bytes, true);
}

}  // namespace lore
