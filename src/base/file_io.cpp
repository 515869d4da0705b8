#include "base/file_io.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/dat_files.h"
#include "base/file_descriptor.h"
#include "base/prepared_file.h"

namespace lore {

namespace {

/// Reads up to the end; `expected` is how many bytes there should be, 0 for a pipe. What `bytes` holds already is room,
/// which spares the work of clearing it.
FileResult ReadRest(int descriptor, size_t expected, std::string& bytes) {
    constexpr size_t kPiece = 65536;
    if (bytes.size() < expected)
        bytes.resize(expected);
    size_t have = 0;
    while (true) {
        if (have == bytes.size())
            bytes.resize(have + kPiece);
        const ssize_t got = ::read(descriptor, bytes.data() + have, bytes.size() - have);
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

}  // namespace

FileResult ReadFile(const std::filesystem::path& path, std::string& bytes) {
    std::unique_ptr<FileDescriptor> file;
    size_t size = 0;
    const FileResult result = OpenRegularFile(path, file, size);
    if (result.Ok())
        return ReadRest(file->Get(), size, bytes);
    bytes.clear();
    return result;
}

FileResult ReadFileOrStream(const std::filesystem::path& path, std::string& bytes) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0) {
        bytes.clear();
        return LastError();
    }
    return ReadRest(file.Get(), S_ISREG(info.st_mode) ? static_cast<size_t>(info.st_size) : 0, bytes);
}

FileResult WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
    PreparedFile file;
    const FileResult result = file.Prepare(path, bytes);
    return result.Ok() ? file.Commit() : result;
}

FileResult ReplaceFile(const std::filesystem::path& path, std::string_view bytes) {
    PreparedFile file;
    const FileResult result = file.Prepare(path, bytes);
    return result.Ok() ? file.TakePlace() : result;
}

FileResult MakeFolders(const std::filesystem::path& folder) {
    std::error_code error;
    if (folder.empty() || std::filesystem::is_directory(folder, error))
        return {};
    const std::filesystem::path parent = folder.parent_path();
    if (const FileResult above = MakeFolders(parent); !above.Ok() || !folder.has_filename())
        return above;
    if (::mkdir(folder.c_str(), 0777) == 0)
        return FlushFolder(parent);
    const FileResult result = LastError();
    if (std::filesystem::is_directory(folder, error))
        return {};  // somebody else was faster
    return result.error == EEXIST ? FileResult{ENOTDIR} : result;
}

FileResult RemoveFile(const std::filesystem::path& path) {
    if (::unlink(path.c_str()) == 0)
        return FlushFolder(path.parent_path());
    return errno == ENOENT ? FileResult{} : LastError();
}

std::vector<std::string> ListDatFiles(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    ReadDatFiles(folder, names);
    return names;
}

}  // namespace lore
