#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "notes/data_files.h"

namespace lore {

/// The lock of a data folder: one process writes at a time. It is the system's lock on the file "lorebinder.lock"
/// beside "Data Files", so that the end of a process, however it comes, gives it back.
class DataLock {
public:
    /// Takes the lock without waiting. Nothing if another process holds it; `error` is then 0, and otherwise the
    /// system's number of why the file could not be made.
    static std::optional<DataLock> Take(const std::filesystem::path& dataRoot, int& error) {
        return Take(dataRoot, kLockName, error);
    }
    /// The same for another kind of process, by the name of its file.
    static std::optional<DataLock> Take(const std::filesystem::path& dataRoot, const std::string& name, int& error);

    DataLock(DataLock&& other) noexcept;
    DataLock& operator=(DataLock&& other) noexcept;
    ~DataLock();

private:
    explicit DataLock(int file) : file_(file) {}
    int file_ = -1;
};

}  // namespace lore
