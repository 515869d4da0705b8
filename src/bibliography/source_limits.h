#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "bibliography/author.h"
#include "bibliography/source.h"

namespace lore {

/// A text that is too long for a record file.
struct LongText {
    std::string field;  ///< its name as the fields of the records are named
    size_t bytes = 0;
};

// The first text of a record that is over kMaxStringLength, or nothing.

std::optional<LongText> FindLongText(const CAuthor& author);
/// Of a source with its type and the authors that travel with it. The citation plays no part: it is made anew.
std::optional<LongText> FindLongText(const CSource& source);

}  // namespace lore
