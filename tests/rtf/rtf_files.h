#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/document.h"

namespace lore {

/// The .rtf files of the tests' data folder, by name; there are some.
std::vector<std::filesystem::path> RtfFiles();
std::string ReadBytes(const std::filesystem::path& path);
/// What the file holds. With LORE_REFRESH_EXPECTED set, `actual` takes its place: the run after this one expects it.
std::string Expected(const std::filesystem::path& path, const std::string& actual);

/// All of a document that isn't text, one line a paragraph, run, row, picture and kept group.
std::string Describe(const Document& document);

/// A document group around `body`.
inline std::string Rtf(std::string_view body) {
    return "{\\rtf1\\ansi " + std::string(body) + "}";
}

}  // namespace lore
