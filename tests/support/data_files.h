#pragma once

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace lore {

/// The files of a folder by name, those with one ending if one is given. The test fails where there are none.
inline std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder, const std::string& ending = {}) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (ending.empty() || entry.path().extension() == ending)
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    EXPECT_FALSE(files.empty()) << folder << " holds nothing to try";
    return files;
}

/// What a fuzz program starts from, and what it found. `data` is the tests' data folder.
inline std::vector<std::filesystem::path> CorpusFiles(const std::filesystem::path& data, const std::string& program) {
    return FilesIn(data.parent_path().parent_path() / "fuzz/corpus" / program);
}

}  // namespace lore
