#pragma once

#include "bibliography/author_list.h"
#include "bibliography/citation_field.h"
#include "bibliography/citation_spans.h"
#include "bibliography/source.h"

namespace lore {

/// Rebuilds the citation: FormattedText, AuthorText and the spans; slot 2 takes the date text for a standard type.
/// Ids of authors that the list doesn't know leave AuthorIDs, but the id right after one that left isn't looked at
/// until the next call. A source type that is neither standard nor custom keeps its FormattedText. A citation that
/// joins UTF-8 and Windows-1252 texts is UTF-8.
void FormatSource(CSource& source, const AuthorList& authors);

}  // namespace lore
