#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

#include "ports/read_context.h"

namespace lore {

/// New GUID texts in a known order: "{GUID 1}", "{GUID 2}" ...
class NumberedGuids : public GuidSource {
public:
    std::string NewGuid() override { return "{GUID " + std::to_string(++count_) + "}"; }
    int Count() const { return count_; }

private:
    std::atomic<int> count_ = 0;
};

/// A moment and a source of GUIDs for readers.
struct ReadWorld {
    NumberedGuids guids;
    ReadContext context{DateTime(2026, 3, 14, 15, 9, 26), DateTime(2026, 3, 14, 14, 9, 26), &guids};
};

/// A folder that is kept in memory where the system has one, otherwise the folder for temporary files.
inline std::filesystem::path MemoryFolder() {
    return std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
}

/// A folder of its own that goes with the test.
class TempFolder {
public:
    explicit TempFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string name = (parent / "lore-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

inline std::string BytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void PutBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace lore
