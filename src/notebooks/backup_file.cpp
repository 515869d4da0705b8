#include "notebooks/backup_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_copy.h"
#include "base/file_number.h"
#include "base/text.h"
#include "exchange/archive_notes.h"
#include "exchange/zip_reader.h"
#include "notebooks/backup_comparison.h"

namespace lore {

namespace {

/// Passes faults on and remembers that there was one.
class NotedFaults : public FaultNotice {
public:
    explicit NotedFaults(FaultNotice& next) : next_(next) {}
    void Tell(const Fault& fault) override {
        any_ = true;
        next_.Tell(fault);
    }
    bool Any() const { return any_; }

private:
    FaultNotice& next_;
    bool any_ = false;
};

/// Gives the finished archive its place.
FileResult PutInPlace(const std::filesystem::path& made, const std::filesystem::path& target, bool keepOld,
                      FaultNotice& faults) {
    std::error_code ignored;
    if (keepOld && std::filesystem::exists(target, ignored)) {
        std::filesystem::path kept;
        if (const FileResult copied = KeepCopy(target, kept); !copied.Ok())
            return copied;
        faults.Tell({"The NoteBook was not read whole; its earlier backup is kept in " + kept.filename().string(),
                     target.string(), "see what was told before"});
    }
    if (::rename(made.c_str(), target.c_str()) != 0)
        return LastError();
    return FlushFolder(target.parent_path());
}

}  // namespace

std::string BackupFileName(std::string_view path, std::string_view noteBookName, std::string_view dateText) {
    const std::string_view name = LastPathComponent(path);
    const size_t point = name.rfind('.');
    if (point == std::string_view::npos)
        return std::string(path);
    std::string inserted = "[";
    for (const char c : noteBookName) {
        if (c != ' ')
            inserted += c == '/' ? '_' : c;
    }
    inserted.append("]").append(dateText);
    return std::string(path).insert(path.size() - name.size() + point, inserted);
}

bool IsWritablePath(const std::filesystem::path& path) {
    const FileNumber file(::open(path.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0)
        return false;
    if (S_ISREG(info.st_mode) && info.st_size == 0)
        ::unlink(path.c_str());
    return true;
}

int WriteBackup(const ExportedNotes& notes, const std::filesystem::path& target, const ExportWorld& world) {
    NotedFaults faults(world.faults);
    const ExportWorld noted{world.book, world.data, world.context, world.prompts, world.progress, faults};
    const std::filesystem::path made = TemporaryName(target);
    int count = ExportNotes(notes, made, true, noted);
    if (count <= 0)
        return count;
    ArchiveResult result = CompareBackup(made, notes, static_cast<size_t>(count), noted);
    if (result.Ok()) {
        if (const FileResult placed = PutInPlace(made, target, faults.Any(), faults); !placed.Ok())
            result = ArchiveResult::Failure(target.string() + ": " + placed.Reason());
    }
    if (!result.Ok()) {
        ::unlink(made.c_str());
        world.prompts.Message(result.reason, kArchivingError, PromptIcon::Error);
    }
    return result.Ok() ? count : -1;
}

bool IsExportArchive(const std::filesystem::path& path) {
    ZipReader zip;
    return zip.Open(path).Ok() && zip.Find(kArchiveNotesName) != nullptr;
}

}  // namespace lore
