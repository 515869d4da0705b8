#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_result.h"

namespace lore {

/// Reads a whole file. `bytes` is empty on failure.
FileResult ReadFile(const std::filesystem::path& path, std::string& bytes);

/// Replaces a file as a whole: a temporary file in the same folder is written, flushed to the disk and renamed over the
/// old one, and the folder is flushed. A crash or a failure at any point leaves the old file. A file that holds these
/// bytes already isn't touched.
FileResult WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

/// Removes a file; one that isn't there is no failure.
FileResult RemoveFile(const std::filesystem::path& path);

/// The names of the entries of a folder that aren't folders and end in the three letters "dat", in byte order.
/// Names of temporary files never end so. A folder that can't be read has none.
std::vector<std::string> ListDatFiles(const std::filesystem::path& folder);

}  // namespace lore
