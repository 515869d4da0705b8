#pragma once

#include <cstdint>
#include <string_view>

#include "rtf/document.h"

namespace lore {

/// Whether the bytes of the font are signs and no letters: one that says so, and that SymbolCharacter knows.
bool IsSymbolFont(const DocumentFont& font);

/// The character that a font of symbols shows for a number, which may be given as one of the private area (0xF000 and
/// on). Those that no other character stands for stay there, as the fonts have them. Numbers of other fonts are
/// Windows-1252 up to 255, Unicode above. 0 for none.
char32_t SymbolCharacter(std::string_view font, int32_t number);

/// Whether it is a number of a symbol font in the private area.
bool IsPrivateSign(char32_t character);

/// A number below 256 for which SymbolCharacter gives that character in a font for which IsSymbolFont holds; 0 for
/// none.
unsigned char SymbolByte(std::string_view font, char32_t character);

}  // namespace lore
