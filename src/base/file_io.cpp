#include "base/file_io.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/file_number.h"

namespace lore {

namespace {

/// Reads up to the end; `expected` is how many bytes there should be, 0 for a pipe.
FileResult ReadRest(int number, size_t expected, std::string& bytes) {
    constexpr size_t kPiece = 65536;
    size_t have = 0;
    while (true) {
        if (have == bytes.size())
            bytes.resize(have == 0 && expected > 0 ? expected : have + kPiece);
        const ssize_t got = ::read(number, bytes.data() + have, bytes.size() - have);
        if (got < 0 && errno == EINTR)
            continue;
        const FileResult result = got < 0 ? LastError() : FileResult{};
        have = got < 0 ? 0 : have + static_cast<size_t>(got);
        if (got <= 0 || have == expected) {
            bytes.resize(have);
            return result;
        }
    }
}

bool HoldsBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::error_code error;
    if (std::filesystem::file_size(path, error) != bytes.size() || error)
        return false;
    std::string old;
    return ReadFile(path, old).Ok() && old == bytes;
}

FileResult WriteAndFlush(const std::filesystem::path& path, std::string_view bytes) {
    FileNumber file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.IsOpen() || !WriteAll(file.Get(), bytes) || ::fsync(file.Get()) != 0 || !file.Close())
        return LastError();
    return {};
}

/// A link is written through, so that the file which it names is the one that is replaced.
std::filesystem::path TargetOf(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(path, error))
        return path;
    const std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
    return error ? path : target;
}

FileResult Replace(const std::filesystem::path& target, std::string_view bytes) {
    const std::filesystem::path temporary = TemporaryName(target);
    FileResult result = WriteAndFlush(temporary, bytes);
    if (result.Ok() && ::rename(temporary.c_str(), target.c_str()) != 0)
        result = LastError();
    if (!result.Ok())
        ::unlink(temporary.c_str());
    return result;
}

}  // namespace

FileResult ReadFile(const std::filesystem::path& path, std::string& bytes) {
    bytes.clear();
    const FileNumber file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0)
        return LastError();
    if (S_ISDIR(info.st_mode))
        return {EISDIR};
    return ReadRest(file.Get(), S_ISREG(info.st_mode) ? static_cast<size_t>(info.st_size) : 0, bytes);
}

FileResult WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
    if (HoldsBytes(path, bytes))
        return {};
    const std::filesystem::path target = TargetOf(path);
    const FileResult result = Replace(target, bytes);
    return result.Ok() ? FlushFolder(target.parent_path()) : result;
}

FileResult ReplaceFile(const std::filesystem::path& path, std::string_view bytes) {
    return HoldsBytes(path, bytes) ? FileResult{} : Replace(TargetOf(path), bytes);
}

FileResult RemoveFile(const std::filesystem::path& path) {
    if (::unlink(path.c_str()) == 0)
        return FlushFolder(path.parent_path());
    return errno == ENOENT ? FileResult{} : LastError();
}

std::vector<std::string> ListDatFiles(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::string name = it->path().filename().string();
        std::error_code ignored;
        if (name.ends_with("dat") && !it->is_directory(ignored))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace lore
