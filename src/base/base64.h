#pragma once

#include <string>
#include <string_view>

namespace lore {

/// Appends bytes in the letters of base 64, padded.
inline void AppendBase64(std::string& text, std::string_view bytes) {
    constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    text.reserve(text.size() + bytes.size() / 3 * 4 + 4);
    for (size_t i = 0; i < bytes.size(); i += 3) {
        const auto at = [&](size_t k) {
            return i + k < bytes.size() ? static_cast<unsigned>(static_cast<unsigned char>(bytes[i + k])) : 0u;
        };
        const unsigned three = at(0) << 16 | at(1) << 8 | at(2);
        text += kLetters[three >> 18];
        text += kLetters[three >> 12 & 63];
        text += i + 1 < bytes.size() ? kLetters[three >> 6 & 63] : '=';
        text += i + 2 < bytes.size() ? kLetters[three & 63] : '=';
    }
}

}  // namespace lore
