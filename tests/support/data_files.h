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

/// Where what a fuzz program starts from lies, and what it found. `data` is the tests' data folder.
inline std::filesystem::path CorpusFolder(const std::filesystem::path& data, const std::string& program) {
    return data.parent_path().parent_path() / "fuzz/corpus" / program;
}
inline std::vector<std::filesystem::path> CorpusFiles(const std::filesystem::path& data, const std::string& program) {
    return FilesIn(CorpusFolder(data, program));
}

}  // namespace lore
