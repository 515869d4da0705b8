#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/file_result.h"

namespace lore {

/// The names that ListDatFiles gives, and whether the folder could be read: for those who write, and must not take a
/// folder that can't be read for an empty one. On failure there are none.
FileResult ReadDatFiles(const std::filesystem::path& folder, std::vector<std::string>& names);

}  // namespace lore
