#include "platform/data_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

#include "base/file_io.h"

namespace lore {

std::optional<DataLock> DataLock::Take(const std::filesystem::path& dataRoot, const std::string& name, int& error) {
    error = MakeFolders(dataRoot).error;
    if (error != 0)
        return std::nullopt;
    // Whoever may write in the folder may take the lock.
    const int file = ::open((dataRoot / name).c_str(), O_RDWR | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666);
    if (file < 0) {
        error = errno;
        return std::nullopt;
    }
    if (::flock(file, LOCK_EX | LOCK_NB) == 0)
        return DataLock(file);
    error = errno == EWOULDBLOCK ? 0 : errno;
    ::close(file);
    return std::nullopt;
}

DataLock::DataLock(DataLock&& other) noexcept : file_(std::exchange(other.file_, -1)) {}

DataLock& DataLock::operator=(DataLock&& other) noexcept {
    std::swap(file_, other.file_);
    return *this;
}

DataLock::~DataLock() {
    if (file_ >= 0)
        ::close(file_);
}

}  // namespace lore
