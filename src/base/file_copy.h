#pragma once

#include <filesystem>

#include "base/file_io.h"

namespace lore {

/// Copies the content of a file of any size to another place, which then holds the whole copy or what it held before: a
/// temporary file beside it is written, flushed to the disk and renamed, and the folder is flushed. A folder, a socket
/// or a device is refused.
FileResult CopyFileAtomically(const std::filesystem::path& from, const std::filesystem::path& to);

/// Keeps what a file holds before it is written anew: a copy in the same folder under a name that no reader picks up,
/// "NAME.kept", "NAME.2.kept" and so on. `kept` is the copy's path.
FileResult KeepCopy(const std::filesystem::path& path, std::filesystem::path& kept);
/// Gives the file itself such a name.
FileResult SetAside(const std::filesystem::path& path);

}  // namespace lore
