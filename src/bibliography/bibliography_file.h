#pragma once

#include <filesystem>

#include "base/loaded.h"
#include "bibliography/source_list.h"

namespace lore {

/// Reads what SaveBibliography wrote; records with an id of 0 or less are dropped. More bytes may follow them.
Loaded<SourceList> LoadBibliography(const std::filesystem::path& path, const ReadContext& context);

}  // namespace lore
