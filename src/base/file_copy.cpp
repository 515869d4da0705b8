#include "base/file_copy.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_descriptor.h"

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
            return Flush(to) ? FileResult{} : LastError();
        if (!WriteAll(to, {piece.data(), static_cast<size_t>(got)}))
            return LastError();
    }
}

/// A copy lets in nobody whom the file doesn't let in; its owner may always change it.
mode_t PermissionsOf(const std::filesystem::path& file) {
    struct stat info = {};
    return (::stat(file.c_str(), &info) == 0 ? info.st_mode & 0666 : 0) | S_IRUSR | S_IWUSR;
}

/// The first of the names for what a file holds now that is free.
std::filesystem::path KeptName(const std::filesystem::path& path) {
    const std::string name = path.string();
    std::string kept = name + ".kept";
    std::error_code error;
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(kept, error)); ++number)
        kept = name + "." + std::to_string(number) + ".kept";
    return kept;
}

}  // namespace

FileResult CopyFileAtomically(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::unique_ptr<FileDescriptor> source;
    size_t ignored = 0;
    if (const FileResult opened = OpenRegularFile(from, source, ignored); !opened.Ok())
        return opened;
    std::filesystem::path temporary;
    const std::unique_ptr<FileDescriptor> copy = MakeTemporary(to, PermissionsOf(from), temporary);
    if (!copy->IsOpen())
        return LastError();
    FileResult result = CopyBytes(source->Get(), copy->Get());
    if (result.Ok() && (!copy->Close() || ::rename(temporary.c_str(), to.c_str()) != 0))
        result = LastError();
    if (result.Ok())
        return FlushFolder(to.parent_path());
    ::unlink(temporary.c_str());
    return result;
}

FileResult KeepCopy(const std::filesystem::path& path, std::filesystem::path& kept) {
    kept = KeptName(path);
    return CopyFileAtomically(path, kept);
}

FileResult SetAside(const std::filesystem::path& path) {
    return ::rename(path.c_str(), KeptName(path).c_str()) == 0 ? FlushFolder(path.parent_path()) : LastError();
}

}  // namespace lore
