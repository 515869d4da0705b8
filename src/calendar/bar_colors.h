#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/rgb.h"

namespace lore {

/// One of the twenty colours of the bars.
struct BarColor {
    Rgb color;
    const char* name;
};

/// By BarColor of an event less one. White text is legible on each.
const std::array<BarColor, 20>& BarColors();
/// The colour of an event's number; the first one for a number without a colour.
const BarColor& BarColorOf(int32_t number);

}  // namespace lore
