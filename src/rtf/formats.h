#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

namespace lore {

// How characters, paragraphs and table rows look. Lengths on paper are twips (1/1440 inch).

inline constexpr int kTwipsPerPixel = 15;  ///< of a screen with 96 of them to the inch
inline constexpr int16_t kMostHalfPoints = 3276;

struct TextColor {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    auto operator<=>(const TextColor&) const = default;
};

enum class ScriptPosition : uint8_t { Baseline, Superscript, Subscript };

/// How characters look. No colour means that of the surroundings (automatic).
struct CharFormat {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    bool smallCaps = false;
    bool allCaps = false;
    ScriptPosition position = ScriptPosition::Baseline;
    int16_t halfPoints = 24;  ///< 1 to kMostHalfPoints
    int32_t font = -1;        ///< index in Document::fonts, -1 for none named
    int32_t link = -1;        ///< index in Document::links, -1 for no link
    std::optional<TextColor> color;
    std::optional<TextColor> background;
    auto operator<=>(const CharFormat&) const = default;
};

enum class ParagraphAlign : uint8_t { Left, Center, Right, Justify };
enum class ListKind : uint8_t { None, Bullet, Decimal, LowerLetter, UpperLetter, LowerRoman, UpperRoman };

/// How a paragraph looks, and its place in a list.
struct ParagraphFormat {
    ParagraphAlign align = ParagraphAlign::Left;
    bool rightToLeft = false;
    ListKind list = ListKind::None;
    uint8_t listLevel = 0;  ///< 0 to 8
    int32_t listId = 0;     ///< paragraphs with the same id and level count on; 0 outside lists
    int16_t listStart = 1;  ///< number of the first item
    int16_t leftIndent = 0;
    int16_t rightIndent = 0;
    int16_t firstIndent = 0;  ///< added to leftIndent for the first line, below 0 for hanging
    int16_t spaceBefore = 0;
    int16_t spaceAfter = 0;
    int16_t lineSpacing = 0;  ///< 0 automatic; twips (below 0: exactly), or 1/240 line when lineMultiple is set
    bool lineMultiple = false;
    bool operator==(const ParagraphFormat&) const = default;
};

/// Whether a cell is one with its neighbour before: the first of such cells, or one that goes on.
enum class CellMerge : uint8_t { None, First, Continued };
enum CellBorder : uint8_t { kBorderTop = 1, kBorderLeft = 2, kBorderBottom = 4, kBorderRight = 8 };

/// The edges and the ground of a cell; what is in it looks as its paragraphs say.
struct CellFormat {
    int32_t rightEdge = 0;  ///< from the left margin
    uint8_t borders = 0;    ///< CellBorder values
    CellMerge across = CellMerge::None;
    CellMerge down = CellMerge::None;
    std::optional<TextColor> background;
    bool operator==(const CellFormat&) const = default;
};

struct RowFormat {
    int32_t leftEdge = 0;
    int32_t cellGap = 0;  ///< half the space between two cells
    std::vector<CellFormat> cells;
    bool operator==(const RowFormat&) const = default;
};

}  // namespace lore
