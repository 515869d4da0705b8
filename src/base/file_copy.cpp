#include "base/file_copy.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_number.h"

namespace lore {

namespace {

FileResult CopyBytes(int from, int to) {
    std::array<char, size_t{1} << 16> piece;
    while (true) {
        const ssize_t got = ::read(from, piece.data(), piece.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return LastError();
        if (got == 0)
            return ::fsync(to) == 0 ? FileResult{} : LastError();
        if (!WriteAll(to, {piece.data(), static_cast<size_t>(got)}))
            return LastError();
    }
}

FileResult OpenAndCopy(const std::filesystem::path& from, const std::filesystem::path& to) {
    // Without waiting, so that a pipe is refused and not read for ever.
    const FileNumber source(::open(from.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info = {};
    if (!source.IsOpen() || ::fstat(source.Get(), &info) != 0)
        return LastError();
    if (!S_ISREG(info.st_mode))
        return {S_ISDIR(info.st_mode) ? EISDIR : EINVAL};
    FileNumber target(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!target.IsOpen())
        return LastError();
    const FileResult result = CopyBytes(source.Get(), target.Get());
    return result.Ok() && !target.Close() ? LastError() : result;
}

}  // namespace

FileResult CopyFileAtomically(const std::filesystem::path& from, const std::filesystem::path& to) {
    const std::filesystem::path temporary = TemporaryName(to);
    FileResult result = OpenAndCopy(from, temporary);
    if (result.Ok() && ::rename(temporary.c_str(), to.c_str()) != 0)
        result = LastError();
    if (result.Ok())
        return FlushFolder(to.parent_path());
    ::unlink(temporary.c_str());
    return result;
}

FileResult KeepCopy(const std::filesystem::path& path, std::filesystem::path& kept) {
    const std::string name = path.string();
    kept = name + ".kept";
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(kept)); ++number)
        kept = name + "." + std::to_string(number) + ".kept";
    return CopyFileAtomically(path, kept);
}

FileResult KeepIfThere(const std::filesystem::path& path) {
    std::filesystem::path kept;
    const FileResult result = KeepCopy(path, kept);
    return result.Missing() ? FileResult{} : result;
}

}  // namespace lore
