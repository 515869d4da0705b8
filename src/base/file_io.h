#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_result.h"

namespace lore {

/// Reads a whole file. `bytes` is empty on failure. What isn't a regular file is refused, without waiting for it.
FileResult ReadFile(const std::filesystem::path& path, std::string& bytes);
/// The same for a file that the user names: it may be a pipe too, which is read to its end.
FileResult ReadFileOrStream(const std::filesystem::path& path, std::string& bytes);

/// Replaces a file as a whole: a temporary file in the same folder is written, flushed to the disk and renamed over the
/// old one, and the folder is flushed. A crash or a failure at any point leaves the old file. A file that holds these
/// bytes already isn't touched. The new file has the permissions of the old one. A link is written through. What stands
/// there and isn't a regular file is refused.
FileResult WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

/// Makes a folder and those that lead to it, and has each that it makes on the disk before it goes on; what exists
/// already is no failure.
FileResult MakeFolders(const std::filesystem::path& folder);

/// Removes a file; one that isn't there is no failure.
FileResult RemoveFile(const std::filesystem::path& path);

/// The names of the entries of a folder that aren't folders and end in the three letters "dat", in byte order.
/// Names of temporary files never end so. A folder that can't be read has none.
std::vector<std::string> ListDatFiles(const std::filesystem::path& folder);

}  // namespace lore
