#pragma once

#include "bibliography/source_list.h"

namespace lore {

/// 5,000 authors.
AuthorList MakeAuthors();

/// Sources of all types and styles in turn, each with one to four of those authors and all fields. Ids begin with 1011.
SourceList MakeSources(int64_t count);

}  // namespace lore
