#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bibliography/source_list.h"

namespace lore {

/// The texts that a choice offers: every distinct text of the sources that isn't empty, trimmed, in order ignoring
/// case. Of texts that differ only by case the first one stands.
std::vector<std::string> DistinctTexts(const SourceList& sources,
                                       const std::function<std::string(size_t position)>& textOf);
/// The same for a slot of all sources.
std::vector<std::string> DistinctFieldTexts(const SourceList& sources, size_t slot);

}  // namespace lore
