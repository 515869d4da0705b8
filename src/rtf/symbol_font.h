#pragma once

#include <cstdint>
#include <string_view>

namespace lore {

/// The character that a font of symbols shows for a number, which may be given as one of the private area (0xF000 and
/// on). Those that no other character stands for stay there, as the fonts have them. Numbers of other fonts are
/// Windows-1252 up to 255, Unicode above. 0 for none.
char32_t SymbolCharacter(std::string_view font, int32_t number);

}  // namespace lore
