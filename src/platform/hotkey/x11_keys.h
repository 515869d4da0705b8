#pragma once

#include <cstdint>

namespace lore {

/// The key symbol of the X server for a virtual key number as the settings hold it; 0 for a number that no key of a
/// hot key has. Letters give their small form, which is what their key gives alone.
uint32_t KeySymbolOf(int32_t virtualKey);

/// The modifier bits of the X server for those of the settings (HotKey::kShift ...).
uint16_t ModifierMaskOf(int32_t modifiers);

}  // namespace lore
