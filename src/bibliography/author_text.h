#pragma once

#include <cstdint>
#include <string>

#include "base/long_list.h"
#include "bibliography/author_list.h"
#include "bibliography/author_name.h"

namespace lore {

// The numbers of joining words and marks between names. Any other number means no word, and a single blank.
inline constexpr int kConjunctionAnd = 1;
inline constexpr int kConjunctionAmpersand = 2;
inline constexpr int kSeparatorComma = 1;
inline constexpr int kSeparatorSemicolon = 2;
inline constexpr int kSeparatorPeriod = 3;

/// How the names of an author list are made and joined.
struct AuthorListForm {
    NameForm name;
    int conjunction = 0;
    int separator = 0;
    int32_t limit = 6;  ///< how many authors are named before "et al"
};

// Each gives the list without periods and white space at its right end. An id without an author ends it with "et al".

/// "Smith, John, Mary Jones, and Carl West"
std::string AuthorsFirstInverted(const LongList& ids, const AuthorList& authors, const AuthorListForm& form);
/// "Smith, J.Q., Jones, M., & West, C"
std::string AuthorsAllInverted(const LongList& ids, const AuthorList& authors, const AuthorListForm& form);
/// "Smith JQ, Jones M, & West C": no commas and periods inside names
std::string AuthorsCompact(const LongList& ids, const AuthorList& authors, const AuthorListForm& form);

/// The author list that filters show, whatever the style and the limit of the source.
std::string AuthorsForFilter(const LongList& ids, const AuthorList& authors);

}  // namespace lore
