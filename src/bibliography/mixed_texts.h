#pragma once

#include <string_view>

#include "bibliography/author_list.h"
#include "bibliography/source.h"

namespace lore {

// A text is UTF-8 or Windows-1252 as a whole. A citation that joins texts of both forms would be neither: such a source
// is formatted from copies of its texts in UTF-8.

/// Whether the citation just built joins texts of both forms.
bool JoinsMixedTexts(const CSource& source, const AuthorList& authors);

/// The same for a text just made of the names of authors.
bool JoinsMixedNames(std::string_view text, const LongList& ids, const AuthorList& authors);

/// A copy with all texts that a citation is made of in UTF-8.
CSource SourceInUtf8(const CSource& source);
/// The authors of these ids, with their names in UTF-8.
AuthorList AuthorsInUtf8(const LongList& ids, const AuthorList& authors);

}  // namespace lore
