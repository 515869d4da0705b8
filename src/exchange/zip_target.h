#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "base/file_descriptor.h"
#include "base/file_io.h"

struct zip_source;

namespace lore {

/// A new file that an archive is written into: first under a temporary name beside its place; Commit flushes it and
/// renames it over what stands there. Without Commit, nothing is left and nothing has changed.
class ZipTarget {
public:
    explicit ZipTarget(const std::filesystem::path& place);
    ~ZipTarget();
    ZipTarget(const ZipTarget&) = delete;
    ZipTarget& operator=(const ZipTarget&) = delete;

    FileResult Create();
    /// What the library writes into; this object outlives it. Null if there was no memory.
    zip_source* MakeSource();
    FileResult Commit();

private:
    static int64_t Serve(void* self, void* data, uint64_t length, int command);
    int64_t ServeWrite(const void* data, uint64_t length);
    int64_t ServeSeek(void* data, uint64_t length);
    bool FlushBuffer();

    std::filesystem::path place_, temporary_;
    std::unique_ptr<FileDescriptor> file_;
    std::string buffer_;  // stands at buffered_ in the file
    uint64_t buffered_ = 0, position_ = 0, size_ = 0;
    bool exists_ = false;
    int error_ = 0;
};

}  // namespace lore
