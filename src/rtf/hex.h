#pragma once

#include <string>

namespace lore {

/// The value of a hexadecimal digit, or -1.
constexpr int HexValue(unsigned char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const unsigned char lower = c | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

inline void AppendHex(std::string& text, unsigned char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
}

/// The byte as \'xx.
inline void AppendHexByte(std::string& rtf, unsigned char byte) {
    rtf += "\\'";
    AppendHex(rtf, byte);
}

}  // namespace lore
