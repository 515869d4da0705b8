#pragma once

#include <cstdint>
#include <string_view>

#include "rtf/formats.h"

namespace lore {

/// What an element does to the flow of the text.
enum class HtmlFlow : uint8_t {
    kInline,
    kBlock,
    kBreak,
    kRule,
    kPicture,
    kLink,
    kBulletList,
    kNumberedList,
    kItem,
    kTable,
    kRow,
    kCell,
    kSkipped,  ///< with all that stands in it
};

struct HtmlTag {
    std::string_view name;
    HtmlFlow flow = HtmlFlow::kInline;
    bool bold = false, italic = false, underline = false, strike = false;
    ScriptPosition position = ScriptPosition::kBaseline;
    int16_t half_points = 0;  ///< 0: as the surroundings
    double scale = 1.0;       ///< of the size of the surroundings
    bool fixed_width = false;
    bool keeps_blanks = false;
    int16_t indent = 0;  ///< twips
};

/// The tag by its lower-case name; any other is an inline element without a look.
const HtmlTag& FindHtmlTag(std::string_view name);

}  // namespace lore
