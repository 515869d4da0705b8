#pragma once

#include <cstdint>
#include <string_view>

#include "rtf/formats.h"

namespace lore {

/// What an element does to the flow of the text.
enum class HtmlFlow : uint8_t {
    Inline,
    Block,
    Break,
    Rule,
    Picture,
    Link,
    BulletList,
    NumberedList,
    Item,
    Table,
    Row,
    Cell,
    Skipped,  ///< with all that stands in it
};

/// What an element means for the text within it, before its own style is read.
struct HtmlTag {
    std::string_view name;
    HtmlFlow flow = HtmlFlow::Inline;
    bool bold = false, italic = false, underline = false, strike = false;
    ScriptPosition position = ScriptPosition::Baseline;
    int16_t halfPoints = 0;  ///< 0: as the surroundings
    double scale = 1.0;      ///< of the size of the surroundings
    bool fixedWidth = false;
    bool keepsBlanks = false;
    int16_t indent = 0;  ///< twips

    /// They alone have a size of their own.
    constexpr bool IsHeading() const { return halfPoints > 0; }
};

/// The tag by its lower-case name; any other is an inline element without a look.
const HtmlTag& FindHtmlTag(std::string_view name);

}  // namespace lore
