#pragma once

#include <filesystem>
#include <string>

namespace lore {

/// Reads any bytes as an archive in a folder of its own, unpacks what it offers, and reads its notes. Gives what went
/// against the promises of the readers, or nothing.
std::string CheckArchive(const std::string& bytes, const std::filesystem::path& folder);

}  // namespace lore
