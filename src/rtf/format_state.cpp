#include "rtf/format_state.h"

#include <algorithm>
#include <limits>

namespace lore {

namespace {

constexpr size_t kMostCells = 64;

bool IsOn(const Token& token) {
    return !token.has_parameter || token.parameter != 0;
}

uint8_t ToColorPart(int32_t value) {
    return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

}  // namespace

int16_t ToTwips(int32_t value) {
    using Limits = std::numeric_limits<int16_t>;
    return static_cast<int16_t>(std::clamp(value, int32_t{Limits::min() + 1}, int32_t{Limits::max()}));
}

void ColorTable::ReadWord(const ControlWord& word, int32_t parameter) {
    has_next_ = true;
    if (word.word == Word::kRed)
        next_.red = ToColorPart(parameter);
    else if (word.word == Word::kGreen)
        next_.green = ToColorPart(parameter);
    else if (word.word == Word::kBlue)
        next_.blue = ToColorPart(parameter);
}

void ColorTable::ReadText(std::string_view text) {
    for (auto left = std::count(text.begin(), text.end(), ';'); left > 0; --left) {
        colors_.push_back(has_next_ ? std::optional(next_) : std::nullopt);
        has_next_ = false;
        next_ = {};
    }
}

std::optional<TextColor> ColorTable::Find(int32_t number) const {
    const auto index = static_cast<size_t>(number);
    return number >= 0 && index < colors_.size() ? colors_[index] : std::nullopt;
}

void FormatState::ResetCharacters(int32_t font) {
    chars = {};
    chars.font = font;
    highlight.reset();
    shading.reset();
}

void FormatState::ApplyCharacterWord(const ControlWord& word, const Token& token, const ColorTable& colors) {
    switch (word.word) {
        case Word::kBold:
            chars.bold = IsOn(token);
            return;
        case Word::kItalic:
            chars.italic = IsOn(token);
            return;
        case Word::kUnderline:
            chars.underline = IsOn(token);
            return;
        case Word::kNoUnderline:
            chars.underline = false;
            return;
        case Word::kStrike:
            chars.strike = IsOn(token);
            return;
        case Word::kSmallCaps:
            chars.small_caps = IsOn(token);
            return;
        case Word::kAllCaps:
            chars.all_caps = IsOn(token);
            return;
        case Word::kScript:
            ApplyScript(word.value, token);
            return;
        case Word::kSize:
            if (token.parameter > 0)
                chars.half_points = static_cast<int16_t>(std::min(token.parameter, int32_t{kMostHalfPoints}));
            return;
        case Word::kColor:
            chars.color = colors.Find(token.parameter);
            return;
        case Word::kHighlight:
            highlight = colors.Find(token.parameter);
            break;
        default:
            shading = colors.Find(token.parameter);
    }
    chars.background = highlight ? highlight : shading;
}

void FormatState::ApplyScript(int kind, const Token& token) {
    const bool down = kind == kScriptDown || kind == kScriptSub;
    chars.position = kind == kScriptNone || !IsOn(token) ? ScriptPosition::kBaseline
                     : down                              ? ScriptPosition::kSubscript
                                                         : ScriptPosition::kSuperscript;
}

void FormatState::ApplyParagraphWord(const ControlWord& word, const Token& token) {
    const int16_t twips = ToTwips(token.parameter);
    switch (word.word) {
        case Word::kParagraphDefaults:
            paragraph = {};
            list_number = 0;
            old_list = ListKind::kNone;
            in_table = false;
            table_level = 0;
            return;
        case Word::kAlign:
            paragraph.align = static_cast<ParagraphAlign>(word.value);
            return;
        case Word::kRightToLeft:
            paragraph.right_to_left = word.value != 0;
            return;
        case Word::kLeftIndent:
            paragraph.left_indent = twips;
            return;
        case Word::kRightIndent:
            paragraph.right_indent = twips;
            return;
        case Word::kFirstIndent:
            paragraph.first_indent = twips;
            return;
        case Word::kSpaceBefore:
            paragraph.space_before = twips;
            return;
        case Word::kSpaceAfter:
            paragraph.space_after = twips;
            return;
        case Word::kLineSpacing:
            paragraph.line_spacing = twips;
            return;
        case Word::kLineMultiple:
            paragraph.line_multiple = token.parameter != 0;
            return;
        case Word::kInTable:
            in_table = IsOn(token);
            return;
        case Word::kTableLevel:
            table_level = twips;
            return;
        default:
            ApplyListWord(word, token.parameter);
    }
}

void FormatState::ApplyListWord(const ControlWord& word, int32_t parameter) {
    if (word.word == Word::kListOverride)
        list_number = parameter;
    else if (word.word == Word::kListLevel)
        paragraph.list_level = static_cast<uint8_t>(std::clamp(parameter, 0, int32_t{ListTables::kLevels - 1}));
    else if (word.word == Word::kOldListKind)
        old_list = static_cast<ListKind>(word.value);
    else if (word.word == Word::kOldListStart)
        paragraph.list_start = ToTwips(parameter);
}

void RowReader::ReadWord(const ControlWord& word, int32_t parameter, const ColorTable& colors) {
    switch (word.word) {
        case Word::kRowDefaults:
            row_ = {};
            cell_ = {};
            border_ = 0;
            return;
        case Word::kRowLeft:
            row_.left_edge = parameter;
            return;
        case Word::kRowGap:
            row_.cell_gap = parameter;
            return;
        case Word::kCellEdge:
            EndCell(parameter);
            return;
        case Word::kCellBorder:
            border_ = static_cast<uint8_t>(word.value);
            return;
        case Word::kBorderStyle:
            cell_.borders |= border_;
            return;
        case Word::kNoBorder:
            cell_.borders &= static_cast<uint8_t>(~border_);
            return;
        case Word::kCellAcross:
            cell_.across = static_cast<CellMerge>(word.value);
            return;
        case Word::kCellDown:
            cell_.down = static_cast<CellMerge>(word.value);
            return;
        default:
            cell_.background = colors.Find(parameter);
    }
}

void RowReader::EndCell(int32_t right_edge) {
    cell_.right_edge = right_edge;
    if (row_.cells.size() < kMostCells)
        row_.cells.push_back(cell_);
    cell_ = {};
    border_ = 0;
}

}  // namespace lore
