#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/file_result.h"
#include "notes/data_files.h"

namespace lore {

struct LockAttempt;

/// The lock of a data folder: one process writes at a time. It is the system's lock on the file "lorebinder.lock"
/// beside "Data Files", so that the end of a process, however it comes, gives it back.
class DataLock {
public:
    /// Takes the lock without waiting. Another kind of process has a file of its own.
    static LockAttempt Take(const std::filesystem::path& dataRoot, const std::string& name = kLockName);

    DataLock(DataLock&& other) noexcept;
    DataLock& operator=(DataLock&& other) noexcept;
    ~DataLock();

private:
    explicit DataLock(int file) : file_(file) {}
    int file_ = -1;
};

/// What came of taking the lock; it is given back with `lock`.
struct LockAttempt {
    std::optional<DataLock> lock;  ///< nothing if another process holds it, or after a failure
    FileResult failure;            ///< why the file could not be made

    bool IsHeldByOther() const { return !lock && failure.Ok(); }
};

}  // namespace lore
