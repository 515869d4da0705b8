#pragma once

#include "bibliography/author_list.h"
#include "bibliography/source.h"

namespace lore {

/// Builds the citation of a source of a custom type from the fields of its CustomTypeCopy, in their order. Part of
/// FormatSource, which has emptied the spans before.
void FormatCustomSource(CSource& source, const AuthorList& authors);

}  // namespace lore
