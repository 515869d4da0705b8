#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/rgb.h"
#include "classify/search_color_list.h"

namespace lore {

/// A border colour that the editor offers.
struct ColorChoice {
    Rgb color = 0;
    std::string name;  ///< "No color", or "#ff8e28", never told by the colour alone
    size_t notes = 0;  ///< how many notes have it now
};

/// No colour, then the colours in use, those of most notes first. `current`, the note's own, stands among them even if
/// no note has it.
std::vector<ColorChoice> ColorChoices(const CSearchColorList& colors, Rgb current);

/// "#ff8e28", or "No color" for 0.
std::string BorderColorName(Rgb color);

}  // namespace lore
