#pragma once

#include <filesystem>

#include "notes/notebook_paths.h"

namespace lore {

/// Files of a data root beside "Data Files".
inline constexpr char kSettingsName[] = "settings.ini";
inline constexpr char kLockName[] = "lorebinder.lock";

/// Whether the program keeps data of its own at a path, be there a file or not, so that nothing that a user exports may
/// stand there: in the folders of "Data Files", in it under the endings that such files have, and the files above. A
/// link counts for where it stands as well as for where it leads.
bool IsDataFile(const DataPaths& data, const std::filesystem::path& file);

}  // namespace lore
