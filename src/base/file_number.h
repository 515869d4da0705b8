#pragma once

#include <filesystem>
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
/// A name in the same folder that no reader of the folder picks up, since it doesn't end in the old ending.
std::filesystem::path TemporaryName(const std::filesystem::path& path);
/// WriteFileAtomically without the flush of the folder, for whoever writes many files and calls FlushFolder once.
FileResult ReplaceFile(const std::filesystem::path& path, std::string_view bytes);
/// What was renamed, made or removed in the folder stands on the disk.
FileResult FlushFolder(const std::filesystem::path& folder);

}  // namespace lore
