#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rtf/formats.h"
#include "rtf/html_tags.h"

namespace lore {

/// How an element takes part in the page.
enum class HtmlDisplay : uint8_t { None, Block, Other };

/// What an inline style says of its element. Nothing means that the element looks as its surroundings do.
struct HtmlStyle {
    std::optional<bool> bold, italic, underline, strike, smallCaps, allCaps;
    std::optional<ScriptPosition> position;
    std::optional<ListKind> list;     ///< None: items without marks
    std::optional<bool> keepsBlanks;  ///< white space counts as it stands
    std::optional<TextColor> color, background;
    std::optional<int16_t> halfPoints;
    std::optional<ParagraphAlign> align;
    std::string font;  ///< the first family; empty for none
    std::optional<HtmlDisplay> display;
    bool invisible = false, officeHides = false;
    bool IsHidden() const { return display == HtmlDisplay::None || invisible || officeHides; }
};

/// Reads the value of a style attribute; what isn't known is passed over. `halfPoints` is the size that relative sizes
/// go from.
HtmlStyle ReadInlineStyle(std::string_view css, int halfPoints);

/// Gives characters what the style says of their letters: weight, lines, case, size.
void GiveLook(const HtmlStyle& style, CharFormat& chars);

/// The size of letters in an element, in half points, without its style. `size` is what a font element says: "1" to
/// "7", or "+1", "-2" from the usual 3.
int16_t SizeIn(const HtmlTag& tag, std::string_view size, int16_t surroundings);

/// "#rrggbb", "#rgb", "rgb(r, g, b)" or one of the sixteen old names.
std::optional<TextColor> ReadHtmlColor(std::string_view text);
std::optional<ParagraphAlign> ReadHtmlAlign(std::string_view text);

}  // namespace lore
