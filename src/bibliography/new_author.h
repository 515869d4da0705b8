#pragma once

#include <cstdint>

#include "bibliography/source_list.h"

namespace lore {

/// The id for a new author: one above the last that was given out and all in the list, which `lastGiven` is raised to.
/// Where there is no such number, the lowest free one that no source names either, or 0 if there is none.
int32_t NewAuthorID(const AuthorList& authors, const SourceList& sources, int& lastGiven);

}  // namespace lore
