#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bibliography/source_list.h"

namespace lore {

/// What sources are grouped by in the source panel. The numbers stand in the settings.
enum class SourceGrouping : int32_t { Publication = 10, Author = 20, Title = 30 };

/// Sources that share one key.
struct SourceGroup {
    std::string key;                ///< exact text
    std::vector<size_t> positions;  ///< of its sources in the list, ascending
    size_t noteCount = 0;           ///< the sizes of their NoteIDs summed; a note of two sources counts twice
};

/// The text that a grouping compares: slot 1, AuthorText as last formatted, or slot 0.
std::string_view GroupKey(const CSource& source, SourceGrouping grouping);
/// Every group, in the order of its first source in the list.
std::vector<SourceGroup> GroupSources(const SourceList& sources, SourceGrouping grouping);

}  // namespace lore
