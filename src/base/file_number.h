#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "base/file_result.h"

namespace lore {

// What the units that write files share.

/// An open file of the system. It closes itself.
class FileNumber {
public:
    explicit FileNumber(int number) : number_(number) {}
    FileNumber(const FileNumber&) = delete;
    FileNumber& operator=(const FileNumber&) = delete;
    ~FileNumber();
    bool IsOpen() const { return number_ >= 0; }
    int Get() const { return number_; }
    /// Closes now; false if the system reports a late write failure.
    bool Close();

private:
    int number_;
};

/// The system's number for what failed last.
FileResult LastError();
/// False, with the reason in LastError, unless all bytes were written.
bool WriteAll(int number, std::string_view bytes);
/// Opens a file to read it, without waiting for anybody. A folder is refused, and so is what isn't a regular file: a
/// pipe would hold the reader up, and some devices have no end.
FileResult OpenRegularFile(const std::filesystem::path& path, std::unique_ptr<FileNumber>& file, size_t& size);
/// The result of opening what should stand at a path: behind a link that leads to nothing, it isn't known to be
/// missing.
FileResult LookedBehindLinks(const std::filesystem::path& path, FileResult result);
/// What a message of that result has to name: the path, or the link on it that leads to nothing.
std::filesystem::path PlaceOfFault(const std::filesystem::path& path, const FileResult& result);
/// The place that a write to a path makes or replaces: behind all links, also behind one that leads to nothing yet.
std::filesystem::path BehindLinks(const std::filesystem::path& path);
/// Makes the empty file that a rename is to give the place of `target`. As far as the system lets it, it has the owner
/// and the permissions of the file that stands there. A pipe, a socket or a device there is refused.
FileResult CreateReplacement(const std::filesystem::path& target, const std::filesystem::path& temporary,
                             std::unique_ptr<FileNumber>& file);
/// A name in the same folder that no reader of the folder picks up, since it doesn't end in the old ending.
std::filesystem::path TemporaryName(const std::filesystem::path& path);
/// True for a name that TemporaryName gives.
bool IsTemporaryName(std::string_view name);
/// WriteFileAtomically without the flush of the folder, for whoever writes many files and calls FlushFolder once.
FileResult ReplaceFile(const std::filesystem::path& path, std::string_view bytes);
/// RemoveFile in the same way.
FileResult DropFile(const std::filesystem::path& path);
/// What was renamed, made or removed in the folder stands on the disk.
FileResult FlushFolder(const std::filesystem::path& folder);

}  // namespace lore
