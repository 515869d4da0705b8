#pragma once

#include <cstdint>
#include <optional>

#include "bibliography/source_list.h"

namespace lore {

/// The limits of the indent, from 0, and of the authors before "et al", from 1, in a bibliography; a value outside
/// becomes the nearer limit.
inline constexpr int32_t kMostBibliographyIndent = 10;
inline constexpr int32_t kMostBibliographyAuthors = 15;
int32_t HeldIndentSpaces(int32_t blanks);
int32_t HeldAuthorsBeforeEtAl(int32_t authors);

/// How the sources of a bibliography are chosen and set. A value that isn't given leaves the sources their own.
struct BibliographySelection {
    LongList ids;  ///< in this order, each once, unknown ones left out; all sources when empty
    std::optional<int32_t> style;
    std::optional<int32_t> indentSpaces;       ///< held to 0 to 10
    std::optional<int32_t> authorsBeforeEtAl;  ///< held to 1 to 15
    bool sorted = true;                        ///< in the order of SortSources
};

/// The chosen sources in the order of the bibliography, set. The sort has formatted them; whoever writes them formats
/// again, which drops the second of two deleted authors beside each other. Without the sort they are as stored.
SourceList SelectSources(SourceList sources, const AuthorList& authors, const BibliographySelection& selection);

}  // namespace lore
