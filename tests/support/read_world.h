#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
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

/// The bytes of each file below a folder, by its path from there.
inline std::map<std::string, std::string> FilesBelow(const std::filesystem::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder).string()] = BytesOf(entry.path());
    }
    return files;
}

/// A folder in the place of a file: nobody can write there, whatever their rights.
inline void Block(const std::filesystem::path& path) {
    std::filesystem::remove(path);
    std::filesystem::create_directories(path / "in the way");
}

/// As long as one lives, nobody can read a file or a folder, whatever their rights: a link to itself stands in its
/// place.
class Unreadable {
public:
    explicit Unreadable(const std::filesystem::path& path) : path_(path), aside_(path.string() + ".aside") {
        std::filesystem::rename(path_, aside_);
        std::filesystem::create_symlink(path_.filename(), path_);
    }
    ~Unreadable() { End(); }
    Unreadable(const Unreadable&) = delete;
    Unreadable& operator=(const Unreadable&) = delete;

    void End() {
        if (!std::filesystem::is_symlink(path_))
            return;
        std::filesystem::remove(path_);
        std::filesystem::rename(aside_, path_);
    }

private:
    std::filesystem::path path_, aside_;
};

/// The names of what stands in a folder.
inline std::set<std::string> NamesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

}  // namespace lore
