#pragma once

#include <array>
#include <cstdint>

namespace lore {

class Settings;

/// The colours that misspelled words can have, with their names, in the order of `MarkSelColor`; red in the low byte.
struct MarkColor {
    const char* name;
    uint32_t color;
};
const std::array<MarkColor, 16>& MarkColors();

/// How misspelled words are marked: a colour (red in the low byte) and effect bits.
struct MarkStyle {
    uint32_t color = 0;
    int32_t effects = 1;
};
MarkStyle DerivedMarkStyle(const Settings& settings);

/// Words that nobody judges the spelling of: "USA", "B2B", "iPhone", and addresses of the web, of mail and of files.
struct SkippedWords {
    bool capitals = true, withDigits = true, mixedCase = true, addresses = true;
};
SkippedWords SkippedWordsOf(const Settings& settings);

}  // namespace lore
