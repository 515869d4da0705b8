#pragma once

#include <string>
#include <string_view>

namespace lore {

/// The target of a HYPERLINK field: its address, with "#" and the place within it if there is one. Empty for any other
/// field.
std::string LinkTarget(std::string_view instruction);

/// The character of a SYMBOL field; 0 for any other field.
char32_t FieldSymbol(std::string_view instruction);

/// The instruction of a field with that target, as plain characters.
std::string LinkInstruction(std::string_view target);

}  // namespace lore
