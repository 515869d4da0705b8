#include "base/file_number.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>

namespace lore {

FileNumber::~FileNumber() {
    if (number_ >= 0)
        ::close(number_);
}

bool FileNumber::Close() {
    return ::close(std::exchange(number_, -1)) == 0;
}

FileResult LastError() {
    return {errno};
}

bool WriteAll(int number, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(number, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

std::filesystem::path TemporaryName(const std::filesystem::path& path) {
    static std::atomic<unsigned> counter{0};
    return path.parent_path() / ("." + path.filename().string() + "." + std::to_string(::getpid()) + "-" +
                                 std::to_string(counter++) + ".tmp");
}

FileResult FlushFolder(const std::filesystem::path& folder) {
    const std::filesystem::path name = folder.empty() ? "." : folder;
    const FileNumber number(::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return number.IsOpen() && ::fsync(number.Get()) == 0 ? FileResult{} : LastError();
}

}  // namespace lore
