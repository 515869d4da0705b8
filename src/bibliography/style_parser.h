#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "bibliography/citation_style.h"
#include "bibliography/style_scanner.h"

namespace lore {

/// One source type of a style as it is written.
struct StyleRow {
    std::string_view dateFormat;
    std::string_view emphasis;
    std::string_view recipe;
};

struct StyleRows {
    StyleAuthors authors;
    std::array<StyleRow, kTypeCount> rows;
};

/// Reads a recipe while the program is compiled: one that is written wrongly is an error of the build.
class StyleParser : StyleScanner {
public:
    explicit constexpr StyleParser(std::string_view text) : StyleScanner(text) {}

    constexpr void ParseRecipe(StyleCell& cell) {
        do
            ParsePiece(cell);
        while (Take(";"));
        Require(AtEnd());
    }

    constexpr void ParseEmphasis(StyleCell& cell) {
        if (AtEnd())
            return;
        do {
            StyleMark& mark = cell.marks[cell.markCount++];
            mark.slot = static_cast<int8_t>(Slot());
            if (Take("else"))
                mark.otherwise = static_cast<int8_t>(Slot());
            mark.kind = Kind();
        } while (Take(","));
        Require(AtEnd());
    }

private:
    constexpr uint16_t SlotBit() { return static_cast<uint16_t>(1u << Slot()); }

    constexpr void ParseAny(StyleCondition& condition, uint16_t first) {
        condition.any = first;
        while (Take("or"))
            condition.any |= SlotBit();
    }

    constexpr void ParseTerm(StyleCondition& condition) {
        if (Take("(")) {
            ParseAny(condition, SlotBit());
            Require(Take(")"));
        } else if (Take("not")) {
            condition.clear |= SlotBit();
        } else if (Take("no date")) {
            condition.clear |= kDateBit;
        } else if (Take("date")) {
            condition.set |= kDateBit;
        } else if (const uint16_t slot = SlotBit(); Sees("or")) {
            ParseAny(condition, slot);
        } else {
            condition.set |= slot;
        }
    }

    constexpr StyleCondition Condition() {
        Require(Take("if"));
        StyleCondition condition;
        do
            ParseTerm(condition);
        while (Take("and"));
        return condition;
    }

    constexpr StylePiece& Add(StyleCell& cell, StylePiece::Kind kind) {
        StylePiece& piece = cell.pieces[cell.pieceCount++];
        piece.kind = kind;
        return piece;
    }

    constexpr void ParseField(StyleCell& cell) {
        StylePiece& field = Add(cell, StylePiece::Kind::Field);
        field.slot = Slot();
        field.ordinal = Take("#");
        field.before = Text();
        field.after = Text();
        if (!Take("(but"))
            return;
        do {
            StylePiece& alternative = Add(cell, StylePiece::Kind::Alternative);
            alternative.before = Text();
            alternative.after = Text();
            alternative.when = Condition();
        } while (Take(","));
        Require(Take(")"));
    }

    constexpr void ParsePiece(StyleCell& cell) {
        if (Take("A")) {
            Add(cell, StylePiece::Kind::Authors);
        } else if (Take("trim")) {
            Add(cell, StylePiece::Kind::Trim).when = Condition();
        } else if (Take("date")) {
            Add(cell, StylePiece::Kind::Date).before = Text();
        } else if (Sees("{")) {
            StylePiece& text = Add(cell, StylePiece::Kind::Text);
            text.before = Text();
            text.when = Condition();
        } else {
            ParseField(cell);
        }
    }
};

constexpr StyleCell ParseRow(const StyleRow& row) {
    StyleCell cell;
    cell.dateFormat = row.dateFormat;
    StyleParser(row.recipe).ParseRecipe(cell);
    StyleParser(row.emphasis).ParseEmphasis(cell);
    return cell;
}

constexpr CitationStyle ParseStyle(const StyleRows& rows) {
    CitationStyle style;
    style.authors = rows.authors;
    for (size_t i = 0; i < rows.rows.size(); ++i)
        style.cells[i] = ParseRow(rows.rows[i]);
    return style;
}

}  // namespace lore
