#pragma once

#include <filesystem>
#include <string_view>

#include "base/file_result.h"

namespace lore {

/// A file that is to be replaced as WriteFileAtomically does it, in two steps: several can stand on the disk before the
/// first of them takes its place.
class PreparedFile {
public:
    PreparedFile() = default;
    PreparedFile(const PreparedFile&) = delete;
    PreparedFile& operator=(const PreparedFile&) = delete;
    /// What hasn't taken its place is removed.
    ~PreparedFile();

    /// Writes a temporary file in the same folder and flushes it to the disk; once for each object. After a failure,
    /// and for a file that holds these bytes already, the next step does nothing.
    FileResult Prepare(const std::filesystem::path& path, std::string_view bytes);
    /// Renames the temporary file over the old one. With a failure the old one stands.
    FileResult TakePlace();
    /// The same, and flushes the folder. After a failure HasTakenPlace tells which file stands.
    FileResult Commit();
    bool HasTakenPlace() const { return hasTakenPlace_; }

private:
    std::filesystem::path target_, temporary_;  // no temporary: there is nothing to rename
    bool hasTakenPlace_ = false;
};

}  // namespace lore
