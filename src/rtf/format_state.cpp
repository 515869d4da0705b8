#include "rtf/format_state.h"

#include <algorithm>
#include <limits>

namespace lore {

namespace {

constexpr size_t kMostCells = 64;

bool IsOn(const Token& token) {
    return !token.hasParameter || token.parameter != 0;
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
    hasNext_ = true;
    if (word.word == Word::Red)
        next_.red = ToColorPart(parameter);
    else if (word.word == Word::Green)
        next_.green = ToColorPart(parameter);
    else if (word.word == Word::Blue)
        next_.blue = ToColorPart(parameter);
}

void ColorTable::ReadText(std::string_view text) {
    for (auto left = std::count(text.begin(), text.end(), ';'); left > 0; --left) {
        colors_.push_back(hasNext_ ? std::optional(next_) : std::nullopt);
        hasNext_ = false;
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
        case Word::Bold:
            chars.bold = IsOn(token);
            return;
        case Word::Italic:
            chars.italic = IsOn(token);
            return;
        case Word::Underline:
            chars.underline = IsOn(token);
            return;
        case Word::NoUnderline:
            chars.underline = false;
            return;
        case Word::Strike:
            chars.strike = IsOn(token);
            return;
        case Word::SmallCaps:
            chars.smallCaps = IsOn(token);
            return;
        case Word::AllCaps:
            chars.allCaps = IsOn(token);
            return;
        case Word::Script:
            ApplyScript(word.value, token);
            return;
        case Word::Size:
            if (token.parameter > 0)
                chars.halfPoints = static_cast<int16_t>(std::min(token.parameter, int32_t{kMostHalfPoints}));
            return;
        case Word::Color:
            chars.color = colors.Find(token.parameter);
            return;
        case Word::Highlight:
            highlight = colors.Find(token.parameter);
            break;
        default:
            shading = colors.Find(token.parameter);
    }
    chars.background = highlight ? highlight : shading;
}

void FormatState::ApplyScript(int kind, const Token& token) {
    const bool down = kind == kScriptDown || kind == kScriptSub;
    chars.position = kind == kScriptNone || !IsOn(token) ? ScriptPosition::Baseline
                     : down                              ? ScriptPosition::Subscript
                                                         : ScriptPosition::Superscript;
}

void FormatState::ApplyParagraphWord(const ControlWord& word, const Token& token) {
    const int16_t twips = ToTwips(token.parameter);
    switch (word.word) {
        case Word::ParagraphDefaults:
            paragraph = {};
            listNumber = 0;
            oldList = ListKind::None;
            inTable = false;
            tableLevel = 0;
            return;
        case Word::Align:
            paragraph.align = static_cast<ParagraphAlign>(word.value);
            return;
        case Word::RightToLeft:
            paragraph.rightToLeft = word.value != 0;
            return;
        case Word::LeftIndent:
            paragraph.leftIndent = twips;
            return;
        case Word::RightIndent:
            paragraph.rightIndent = twips;
            return;
        case Word::FirstIndent:
            paragraph.firstIndent = twips;
            return;
        case Word::SpaceBefore:
            paragraph.spaceBefore = twips;
            return;
        case Word::SpaceAfter:
            paragraph.spaceAfter = twips;
            return;
        case Word::LineSpacing:
            paragraph.lineSpacing = twips;
            return;
        case Word::LineMultiple:
            paragraph.lineMultiple = token.parameter != 0;
            return;
        case Word::InTable:
            inTable = IsOn(token);
            return;
        case Word::TableLevel:
            tableLevel = twips;
            return;
        default:
            ApplyListWord(word, token.parameter);
    }
}

void FormatState::ApplyListWord(const ControlWord& word, int32_t parameter) {
    if (word.word == Word::ListOverride)
        listNumber = parameter;
    else if (word.word == Word::ListLevel)
        paragraph.listLevel = static_cast<uint8_t>(std::clamp(parameter, 0, int32_t{ListTables::kLevels - 1}));
    else if (word.word == Word::OldListKind)
        oldList = static_cast<ListKind>(word.value);
    else if (word.word == Word::OldListStart)
        paragraph.listStart = ToTwips(parameter);
}

void RowReader::ReadWord(const ControlWord& word, int32_t parameter, const ColorTable& colors) {
    switch (word.word) {
        case Word::RowDefaults:
            row_ = {};
            cell_ = {};
            border_ = 0;
            return;
        case Word::RowLeft:
            row_.leftEdge = parameter;
            return;
        case Word::RowGap:
            row_.cellGap = parameter;
            return;
        case Word::CellEdge:
            EndCell(parameter);
            return;
        case Word::CellBorder:
            border_ = static_cast<uint8_t>(word.value);
            return;
        case Word::BorderStyle:
            cell_.borders |= border_;
            return;
        case Word::NoBorder:
            cell_.borders &= static_cast<uint8_t>(~border_);
            return;
        case Word::CellAcross:
            cell_.across = static_cast<CellMerge>(word.value);
            return;
        case Word::CellDown:
            cell_.down = static_cast<CellMerge>(word.value);
            return;
        default:
            cell_.background = colors.Find(parameter);
    }
}

void RowReader::EndCell(int32_t rightEdge) {
    cell_.rightEdge = rightEdge;
    if (row_.cells.size() < kMostCells)
        row_.cells.push_back(cell_);
    cell_ = {};
    border_ = 0;
}

}  // namespace lore
