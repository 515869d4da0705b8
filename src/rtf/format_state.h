#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "rtf/formats.h"
#include "rtf/list_tables.h"
#include "rtf/tokenizer.h"

namespace lore {

/// The colours of a file by number.
class ColorTable {
public:
    void ReadWord(const ControlWord& word, int32_t parameter);
    /// The text of the table: each semicolon ends a colour.
    void ReadText(std::string_view text);
    /// No colour for the automatic one and for numbers that the table doesn't have.
    std::optional<TextColor> Find(int32_t number) const;

private:
    std::vector<std::optional<TextColor>> colors_;
    TextColor next_;
    bool hasNext_ = false;
};

/// How text looks at a place of the file; each group has its own.
struct FormatState {
    CharFormat chars;
    std::optional<TextColor> highlight;
    std::optional<TextColor> shading;
    ParagraphFormat paragraph;
    int32_t listNumber = 0;  ///< \ls
    ListKind oldList = ListKind::None;
    int32_t target = -1;  ///< link target that the field around gives
    bool inTable = false;
    int16_t tableLevel = 0;
    size_t firstPicture = 0;  ///< of the object or the shape around, among the pictures of all

    void ApplyCharacterWord(const ControlWord& word, const Token& token, const ColorTable& colors);
    void ApplyParagraphWord(const ControlWord& word, const Token& token);
    /// \plain: all of the characters but the link.
    void ResetCharacters(int32_t font);
    /// 0 outside tables.
    int TableLevel() const { return tableLevel > 1 ? tableLevel : inTable ? 1 : 0; }

private:
    void ApplyListWord(const ControlWord& word, int32_t parameter);
    void ApplyScript(int kind, const Token& token);
};

/// Row and cell properties as they come before the cells of a row.
class RowReader {
public:
    void ReadWord(const ControlWord& word, int32_t parameter, const ColorTable& colors);
    const RowFormat& Row() const { return row_; }

private:
    void EndCell(int32_t rightEdge);

    RowFormat row_;
    CellFormat cell_;
    uint8_t border_ = 0;  ///< the one that a border style is about
};

/// A number of twips as a document holds it.
int16_t ToTwips(int32_t value);

}  // namespace lore
