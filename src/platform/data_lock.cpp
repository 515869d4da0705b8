#include "platform/data_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

#include "base/file_io.h"

namespace lore {

LockAttempt DataLock::Take(const std::filesystem::path& dataRoot, const std::string& name) {
    if (const FileResult made = MakeFolders(dataRoot); !made.Ok())
        return {{}, made};
    // Whoever may write in the folder may take the lock.
    const int file = ::open((dataRoot / name).c_str(), O_RDWR | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666);
    if (file < 0)
        return {{}, {errno}};
    if (::flock(file, LOCK_EX | LOCK_NB) == 0)
        return {DataLock(file), {}};
    const FileResult failure{errno == EWOULDBLOCK ? 0 : errno};
    ::close(file);
    return {{}, failure};
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
