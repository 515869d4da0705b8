#include "base/text_join.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

bool IsAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80u; });
}

}  // namespace

bool IsWideText(std::string_view bytes) {
    return !IsAscii(bytes) && IsValidUtf8(bytes);
}

std::string JoinTexts(std::string_view first, std::string_view second) {
    const bool isMixed = !IsAscii(first) && !IsAscii(second) && IsValidUtf8(first) != IsValidUtf8(second);
    return isMixed ? FromUtf8(ToUtf8(first) + ToUtf8(second)) : std::string(first).append(second);
}

}  // namespace lore
