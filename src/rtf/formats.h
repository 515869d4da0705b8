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

enum class ScriptPosition : uint8_t { kBaseline, kSuperscript, kSubscript };

/// How characters look. No colour means that of the surroundings (automatic).
struct CharFormat {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    bool small_caps = false;
    bool all_caps = false;
    ScriptPosition position = ScriptPosition::kBaseline;
    int16_t half_points = 24;  ///< 1 to kMostHalfPoints
    int32_t font = -1;         ///< index in Document::fonts, -1 for none named
    int32_t link = -1;         ///< index in Document::links, -1 for no link
    std::optional<TextColor> color;
    std::optional<TextColor> background;
    auto operator<=>(const CharFormat&) const = default;
};

enum class ParagraphAlign : uint8_t { kLeft, kCenter, kRight, kJustify };
enum class ListKind : uint8_t { kNone, kBullet, kDecimal, kLowerLetter, kUpperLetter, kLowerRoman, kUpperRoman };

struct ParagraphFormat {
    ParagraphAlign align = ParagraphAlign::kLeft;
    bool right_to_left = false;
    ListKind list = ListKind::kNone;
    uint8_t list_level = 0;  ///< 0 to 8
    int32_t list_id = 0;     ///< paragraphs with the same id and level count on; 0 outside lists
    int16_t list_start = 1;  ///< number of the first item
    int16_t left_indent = 0;
    int16_t right_indent = 0;
    int16_t first_indent = 0;  ///< added to left_indent for the first line, below 0 for hanging
    int16_t space_before = 0;
    int16_t space_after = 0;
    int16_t line_spacing = 0;  ///< 0 automatic; twips (below 0: exactly), or 1/240 line when line_multiple is set
    bool line_multiple = false;
    bool operator==(const ParagraphFormat&) const = default;
};

enum class CellMerge : uint8_t { kNone, kFirst, kContinued };
enum CellBorder : uint8_t { kBorderTop = 1, kBorderLeft = 2, kBorderBottom = 4, kBorderRight = 8 };

struct CellFormat {
    int32_t right_edge = 0;  ///< from the left margin
    uint8_t borders = 0;     ///< CellBorder values
    CellMerge across = CellMerge::kNone;
    CellMerge down = CellMerge::kNone;
    std::optional<TextColor> background;
    bool operator==(const CellFormat&) const = default;
};

struct RowFormat {
    int32_t left_edge = 0;
    int32_t cell_gap = 0;  ///< half the space between two cells
    std::vector<CellFormat> cells;
    bool operator==(const RowFormat&) const = default;
};

}  // namespace lore
