#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <sys/types.h>

#include "base/file_result.h"

namespace lore {

// What the units that write files share.

/// An open file of the system. It closes itself.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();
    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    /// Closes now; false if the system reports a late write failure.
    bool Close();

private:
    int descriptor_;
};

/// The system's number for what failed last.
FileResult LastError();
/// False, with the reason in LastError, unless all bytes were written.
bool WriteAll(int descriptor, std::string_view bytes);
/// What was written stands on the disk; false with errno if not. An interruption is no failure.
bool Flush(int descriptor);
/// Opens a file to read it, without waiting for anybody. A folder is refused, and so is what isn't a regular file: a
/// pipe would hold the reader up, and some devices have no end.
FileResult OpenRegularFile(const std::filesystem::path& path, std::unique_ptr<FileDescriptor>& file, size_t& size);
/// The result of opening what should stand at a path: behind a link that leads to nothing, it isn't known to be
/// missing.
FileResult LookedBehindLinks(const std::filesystem::path& path, FileResult result);
/// What a message of that result has to name: the path, or the link on it that leads to nothing.
std::filesystem::path PlaceOfFault(const std::filesystem::path& path, const FileResult& result);
/// The place that a write to a path makes or replaces: behind all links, also behind one that leads to nothing yet.
std::filesystem::path BehindLinks(const std::filesystem::path& path);
/// Makes an empty file in the folder of `path`, under a name that no reader of the folder picks up: `made`. What bears
/// such a name already stays. Not open, with the reason in LastError, if it couldn't be made.
std::unique_ptr<FileDescriptor> MakeTemporary(const std::filesystem::path& path, mode_t permissions,
                                              std::filesystem::path& made);
/// Makes, as `temporary`, the empty file that a rename is to give the place of `target`. As far as the system lets it,
/// it has the owner and the permissions of the file that stands there. A pipe, a socket or a device there is refused.
FileResult CreateReplacement(const std::filesystem::path& target, std::filesystem::path& temporary,
                             std::unique_ptr<FileDescriptor>& file);
/// True for a name that MakeTemporary gives.
bool IsTemporaryName(std::string_view name);
/// WriteFileAtomically without the flush of the folder, for whoever writes many files and calls FlushFolder once.
FileResult ReplaceFile(const std::filesystem::path& path, std::string_view bytes);
/// RemoveFile in the same way.
FileResult DropFile(const std::filesystem::path& path);
/// What was renamed, made or removed in the folder stands on the disk.
FileResult FlushFolder(const std::filesystem::path& folder);

}  // namespace lore
