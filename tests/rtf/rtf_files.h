#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/document.h"

namespace lore {

/// The .rtf files of the tests' data folder, by name.
std::vector<std::filesystem::path> RtfFiles();
std::string ReadBytes(const std::filesystem::path& path);
/// With LORE_REFRESH_EXPECTED set, writes `actual` as the new expectation; always gives what the file holds then.
std::string Expected(const std::filesystem::path& path, const std::string& actual);

/// All of a document that isn't text, one line a paragraph, run, row, picture and kept group.
std::string Describe(const Document& document);

/// A document group around `body`.
inline std::string Rtf(std::string_view body) {
    return "{\\rtf1\\ansi " + std::string(body) + "}";
}

}  // namespace lore
