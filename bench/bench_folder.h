#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace lore {

/// A folder of its own among the temporary files, which goes with the object.
class BenchFolder {
public:
    BenchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "lore-bench-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~BenchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace lore
