#pragma once

#include <cstdint>

namespace lore {

/// A colour as 32 bits with red in the low byte, as the files hold it.
using Rgb = uint32_t;
constexpr Rgb MakeRgb(unsigned red, unsigned green, unsigned blue) {
    return (red & 255u) | (green & 255u) << 8 | (blue & 255u) << 16;
}
constexpr unsigned RedOf(Rgb color) {
    return color & 255u;
}
constexpr unsigned GreenOf(Rgb color) {
    return color >> 8 & 255u;
}
constexpr unsigned BlueOf(Rgb color) {
    return color >> 16 & 255u;
}

}  // namespace lore
