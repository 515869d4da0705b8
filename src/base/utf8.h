#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace lore {

// The bytes of UTF-8. Nothing here looks whether they are valid.

/// True for each byte of a character but the first one.
constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

/// The bytes of the character that begins with this one: 1 to 4, 1 if none begins so.
constexpr size_t SequenceLength(char lead) {
    const auto value = static_cast<unsigned char>(lead);
    return value < 0xC0 ? 1 : value < 0xE0 ? 2 : value < 0xF0 ? 3 : 4;
}

/// What the first byte of a character of `length` bytes, 2 to 4, holds of it, and what is held together with the next.
constexpr char32_t LeadBits(char lead, size_t length) {
    return static_cast<unsigned char>(lead) & (0x7FU >> length);
}
constexpr char32_t WithNext(char32_t bits, char next) {
    return bits << 6 | (static_cast<unsigned char>(next) & 0x3FU);
}

/// The character at the front of a text that isn't empty; of one that breaks off, what is there of it.
constexpr char32_t FirstCharacter(std::string_view utf8) {
    const size_t length = SequenceLength(utf8[0]);
    if (length == 1)
        return static_cast<unsigned char>(utf8[0]) & 0x7FU;
    char32_t c = LeadBits(utf8[0], length);
    for (size_t i = 1; i < length && i < utf8.size(); ++i)
        c = WithNext(c, utf8[i]);
    return c;
}

inline size_t CountCharacters(std::string_view utf8) {
    return static_cast<size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) { return !IsContinuation(c); }));
}

}  // namespace lore
