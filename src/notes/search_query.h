#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ports/prompts.h"

namespace lore {

enum SearchOperator : int32_t { kNoOperator = -1, kAndOperator = 1, kOrOperator = 2 };

/// The search text that brings in every note of the NoteBook.
inline constexpr char kShowAll[] = "SHOWALL";

/// A line of search text and what it means.
struct NoteSearch {
    int32_t searchOperator = kNoOperator;
    std::string searchText;
    std::vector<std::string> searchTerms;  ///< as typed, with their quotes

    bool IsShowAll() const { return searchText == kShowAll; }
};

/// Parses a line of search text. Capitals "AND" or "OR" anywhere in the text part it into terms, which are trimmed and
/// dropped when empty; without an operator the whole text is the one term. A text that holds both operators is invalid:
/// the user is told unless `prompts` is null, the search text becomes empty, and the result is false.
bool ParseSearchString(std::string_view text, Prompts* prompts, NoteSearch& search);

/// A term as it is looked for.
struct SearchTerm {
    std::u32string folded;   ///< case-folded characters; a term without any is found nowhere
    bool wholeWord = false;  ///< no word character may stand on either side

    /// A term that begins with a double quote means whole words and loses its first and its last character.
    static SearchTerm FromText(std::string_view term);
    std::string Utf8() const;
};

}  // namespace lore
