#pragma once

#include <filesystem>

#include "bibliography/source_list.h"

namespace lore {

/// Empties the list and reads what SaveBibliography wrote; records with an id of 0 or less are dropped. `whole` is true
/// unless the file isn't there or doesn't hold all that it promises.
FileResult LoadBibliography(const std::filesystem::path& path, const ReadContext& context, SourceList& sources,
                            bool& whole);

}  // namespace lore
