#include "base/prepared_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "base/file_descriptor.h"

namespace lore {

namespace {

/// Compares piece by piece: the file may be large, and nearly always differs early.
bool HoldsBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::error_code error;
    if (std::filesystem::file_size(path, error) != bytes.size())
        return false;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    char piece[16384];
    while (file.IsOpen()) {
        const ssize_t got = ::read(file.Get(), piece, sizeof piece);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got == 0 && bytes.empty();
        const std::string_view read(piece, static_cast<size_t>(got));
        if (!bytes.starts_with(read))
            return false;
        bytes.remove_prefix(read.size());
    }
    return false;
}

}  // namespace

PreparedFile::~PreparedFile() {
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

FileResult PreparedFile::Prepare(const std::filesystem::path& path, std::string_view bytes) {
    if (HoldsBytes(path, bytes))
        return {};
    target_ = BehindLinks(path);
    std::filesystem::path made;
    std::unique_ptr<FileDescriptor> file;
    const FileResult created = CreateReplacement(target_, made, file);
    if (!file || !file->IsOpen())
        return created;
    if (WriteAll(file->Get(), bytes) && Flush(file->Get()) && file->Close()) {
        temporary_ = std::move(made);
        return {};
    }
    const FileResult result = LastError();
    ::unlink(made.c_str());
    return result;
}

FileResult PreparedFile::TakePlace() {
    if (temporary_.empty())
        return {};
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        return LastError();
    temporary_.clear();
    hasTakenPlace_ = true;
    return {};
}

FileResult PreparedFile::Commit() {
    const FileResult result = TakePlace();
    return result.Ok() && hasTakenPlace_ ? FlushFolder(target_.parent_path()) : result;
}

}  // namespace lore
