#include "base/file_descriptor.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lore {

namespace {

constexpr char kTemporaryEnding[] = ".tmp";
/// Names from this length on, in bytes, may have no room for more.
constexpr size_t kLongestKept = 200;
/// Far more than programs that were ended while they wrote leave beside one file.
constexpr int kMostTaken = 10'000;
/// As many as the system follows.
constexpr int kMostLinks = 40;
constexpr mode_t kPermissions = 0777;

/// No reader of the folder picks it up, since it doesn't end in the old ending.
std::filesystem::path TemporaryName(const std::filesystem::path& path) {
    static std::atomic<unsigned> counter{0};
    const std::string name = path.filename().string();
    return path.parent_path() / ("." + (name.size() < kLongestKept ? name : "long") + "." + std::to_string(::getpid()) +
                                 "-" + std::to_string(counter++) + kTemporaryEnding);
}

/// Takes digits off the end of a name; false if there are none.
bool DropDigits(std::string_view& name) {
    const size_t length = name.find_last_not_of("0123456789") + 1;
    const bool any = length < name.size();
    name = name.substr(0, length);
    return any;
}

/// Gives a new file the owner and the permissions of an old one. Some file systems know neither, and only an
/// administrator gives files away. A group that isn't the old one gets no more rights than anybody has.
void TakeOwnerAndPermissions(int descriptor, const struct stat& old) {
    mode_t permissions = old.st_mode & kPermissions;
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0) {
        struct stat made = {};
        if (::fstat(descriptor, &made) != 0 || made.st_gid != old.st_gid)
            permissions &= S_IRWXU | S_IRWXO | ((old.st_mode & S_IRWXO) << 3);
    }
    // The other way round, a new owner would take permissions away.
    [[maybe_unused]] const int ignored = ::fchmod(descriptor, permissions);
}

/// The link on a path that leads to nothing; empty if there is none.
std::filesystem::path DeadLink(const std::filesystem::path& path) {
    for (std::filesystem::path place = path; !place.empty(); place = place.parent_path()) {
        struct stat info = {};
        if (::lstat(place.c_str(), &info) == 0)
            return S_ISLNK(info.st_mode) && ::stat(place.c_str(), &info) != 0 ? place : std::filesystem::path();
        if (!place.has_relative_path())
            break;
    }
    return {};
}

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

bool FileDescriptor::Close() {
    return ::close(std::exchange(descriptor_, -1)) == 0;
}

FileResult LastError() {
    return {errno};
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

bool Flush(int descriptor) {
    int result = 0;
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

FileResult OpenRegularFile(const std::filesystem::path& path, std::unique_ptr<FileDescriptor>& file, size_t& size) {
    file = std::make_unique<FileDescriptor>(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info = {};
    if (!file->IsOpen() || ::fstat(file->Get(), &info) != 0)
        return LookedBehindLinks(path, LastError());
    size = static_cast<size_t>(info.st_size);
    if (S_ISDIR(info.st_mode))
        return {EISDIR};
    return S_ISREG(info.st_mode) ? FileResult{} : FileResult{FileResult::kNoRegularFile};
}

FileResult LookedBehindLinks(const std::filesystem::path& path, FileResult result) {
    return result.Missing() && !DeadLink(path).empty() ? FileResult{FileResult::kDeadLink} : result;
}

std::filesystem::path PlaceOfFault(const std::filesystem::path& path, const FileResult& result) {
    return result.error == FileResult::kDeadLink ? DeadLink(path) : path;
}

std::filesystem::path BehindLinks(const std::filesystem::path& path) {
    std::filesystem::path place = path;
    for (int left = kMostLinks; left > 0; --left) {
        std::error_code noLink;
        const std::filesystem::path named = std::filesystem::read_symlink(place, noLink);
        if (noLink)
            return place;
        place = place.parent_path() / named;
    }
    return path;
}

std::unique_ptr<FileDescriptor> MakeTemporary(const std::filesystem::path& path, mode_t permissions,
                                              std::filesystem::path& made) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    std::unique_ptr<FileDescriptor> file;
    // Process numbers come again: a name may have been left, or another program, which sees other numbers, writes
    // there.
    for (int left = kMostTaken; left > 0; --left) {
        made = TemporaryName(path);
        file = std::make_unique<FileDescriptor>(::open(made.c_str(), kFlags, permissions));
        if (file->IsOpen() || errno != EEXIST)
            break;
    }
    return file;
}

FileResult CreateReplacement(const std::filesystem::path& target, std::filesystem::path& temporary,
                             std::unique_ptr<FileDescriptor>& file) {
    struct stat old = {};
    const bool isThere = ::stat(target.c_str(), &old) == 0;
    if (!isThere && errno != ENOENT)
        return LastError();
    if (isThere && !S_ISREG(old.st_mode))
        return {S_ISDIR(old.st_mode) ? EISDIR : FileResult::kNoRegularFile};
    file = MakeTemporary(target, isThere ? 0600 : 0666, temporary);
    if (!file->IsOpen())
        return LastError();
    if (isThere)
        TakeOwnerAndPermissions(file->Get(), old);
    return {};
}

bool IsTemporaryName(std::string_view name) {
    if (!name.starts_with('.') || !name.ends_with(kTemporaryEnding))
        return false;
    name.remove_suffix(sizeof kTemporaryEnding - 1);
    if (!DropDigits(name) || !name.ends_with('-'))
        return false;
    name.remove_suffix(1);
    return DropDigits(name) && name.size() > 2 && name.ends_with('.');
}

FileResult DropFile(const std::filesystem::path& path) {
    return ::unlink(path.c_str()) == 0 || errno == ENOENT ? FileResult{} : LastError();
}

FileResult FlushFolder(const std::filesystem::path& folder) {
    const std::filesystem::path name = folder.empty() ? "." : folder;
    const FileDescriptor opened(::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.IsOpen())
        return LastError();
    // Many a file system of a network or a shared folder can't flush folders: it answers so, and there is no more to
    // do.
    if (Flush(opened.Get()) || errno == EINVAL || errno == ENOTSUP || errno == EBADF)
        return {};
    return LastError();
}

}  // namespace lore
