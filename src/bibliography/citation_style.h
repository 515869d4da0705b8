#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "bibliography/source_types.h"

namespace lore {

/// A test on what a source holds: bit n stands for slot n, kDateBit for HasDate.
struct StyleCondition {
    uint16_t set = 0;    ///< all of these are there
    uint16_t clear = 0;  ///< none of these is there
    uint16_t any = 0;    ///< at least one of these is there; no test when 0

    constexpr bool Holds(uint16_t present) const {
        return (present & set) == set && (present & clear) == 0 && (any == 0 || (present & any) != 0);
    }
};
inline constexpr uint16_t kDateBit = 1u << 15;

/// One step of a citation. The alternatives of a field stand right behind it: the first whose condition holds gives the
/// texts around the field.
struct StylePiece {
    enum class Kind : uint8_t { Authors, Field, Alternative, Text, Trim, Date };

    Kind kind = Kind::Authors;
    uint8_t slot = 0;
    bool ordinal = false;
    StyleCondition when;             ///< of an alternative, a text, a trim
    std::string_view before, after;  ///< around a field; `before` alone is a text, or the format of a date
};

/// A slot whose text is emphasised; `otherwise` takes its place when it is empty, -1 for none.
struct StyleMark {
    int8_t slot = 0;
    int8_t otherwise = -1;
    int32_t kind = 1;
};

/// The recipe of one source type in one style.
struct StyleCell {
    static constexpr size_t kMaxPieces = 16;
    static constexpr size_t kMaxMarks = 2;

    std::string_view dateFormat;
    std::array<StylePiece, kMaxPieces> pieces;
    size_t pieceCount = 0;
    std::array<StyleMark, kMaxMarks> marks;
    size_t markCount = 0;
};

/// Which names of a list have the last name in front; Compact: all, without a comma after it.
enum class AuthorForm : uint8_t { FirstInverted, AllInverted, Compact };
enum class AuthorLetters : uint8_t { AsTyped, Capitals, NoPeriods };

constexpr uint8_t TypeBit(int32_t type) {
    return static_cast<uint8_t>(1u << type);
}
inline constexpr uint8_t kAllTypes = 0xFF;

/// How a style shows authors.
struct StyleAuthors {
    AuthorForm form = AuthorForm::Compact;
    bool initialOnly = false;
    bool spaceAfterFirst = false;
    uint8_t middleTypes = kAllTypes;  ///< the source types whose authors show the middle initial, as TypeBit
    int conjunction = 0;
    int separator = 0;
    AuthorLetters letters = AuthorLetters::AsTyped;
};

/// One of the styles that users choose from, as its table of recipes gives it.
struct CitationStyle {
    StyleAuthors authors;
    std::array<StyleCell, kTypeCount> cells;  ///< of the source types from 1
};

/// The style with a number, null for a number that is no style.
const CitationStyle* FindStyle(int32_t number);

}  // namespace lore
