#pragma once

#include <algorithm>

namespace lore {

/// Pictures don't grow beyond this height, in pixels; one that is taller in itself stays as tall.
inline constexpr double kTallestGrown = 4096;

/// The scale of an attached picture that stands in a room of a width, from the size, not wider than that, which it has
/// there at a zoom of 1.0. Any zoom gives a size that can be drawn.
inline double PictureScale(double zoom, double width, double height, double roomWidth) {
    constexpr double kLeastScale = 0.01;
    return std::min({std::max(zoom, kLeastScale), roomWidth / width, std::max(kTallestGrown / height, 1.0)});
}

}  // namespace lore
