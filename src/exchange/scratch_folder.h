#pragma once

#include <filesystem>
#include <system_error>
#include <utility>

namespace lore {

/// A folder for what is needed for a while; it goes with its owner. All that lies in it is deleted: its name comes from
/// nowhere outside.
class ScratchFolder {
public:
    /// What a crash has left goes first: `left`, which is the folder itself or one above it.
    ScratchFolder(std::filesystem::path path, const std::filesystem::path& left) : path_(std::move(path)) {
        std::error_code ignored;
        std::filesystem::remove_all(left, ignored);
        std::filesystem::create_directories(path_, ignored);
    }
    ~ScratchFolder() { Remove(); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    /// Deletes all of it at once; before the owner goes, where large files are to go beside the window.
    void Remove() const {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

private:
    std::filesystem::path path_;
};

}  // namespace lore
