#include "notebooks/backup_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "base/text.h"
#include "exchange/archive_notes.h"
#include "exchange/zip_reader.h"
#include "notebooks/backup_comparison.h"

namespace lore {

namespace {

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

/// True if an earlier backup has one of these attachment files.
bool HoldsOneOf(const std::vector<std::string>& names, const std::filesystem::path& backup) {
    ZipReader zip;
    return !names.empty() && zip.Open(backup).Ok() &&
           std::any_of(names.begin(), names.end(), [&](const std::string& name) { return zip.Find(ToUtf8(name)); });
}

}  // namespace

std::string BackupFileName(std::string_view path, std::string_view noteBookName, std::string_view dateText,
                           std::string_view folder) {
    const std::string_view name = LastPathComponent(path);
    const size_t point = std::min(name.rfind('.'), name.size());
    if (point == name.size() && folder.empty())
        return std::string(path);
    std::string inserted(noteBookName);
    std::erase(inserted, ' ');
    if (!folder.empty())
        inserted.append(" ").append(folder);
    std::replace(inserted.begin(), inserted.end(), '/', '_');
    return std::string(path).insert(path.size() - name.size() + point, "[" + inserted + "]" + std::string(dateText));
}

bool IsWritablePath(const std::filesystem::path& path) {
    const std::filesystem::path place = BehindLinks(path);
    const FileDescriptor file(::open(place.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode))
        return false;
    if (info.st_size == 0)
        ::unlink(place.c_str());
    return true;
}

WrittenBackup WriteBackup(const ExportedNotes& notes, const std::filesystem::path& place,
                          const std::filesystem::path& earlier, const ExportJob& job, const HeardFaults& heard) {
    const WrittenBackup failed{.outcome = {.kind = ArchiveOutcome::Kind::Failed}};
    const std::filesystem::path target = BehindLinks(place);
    if (const std::string reason = WhyNoArchive(target, job.data); notes.count > 0 && !reason.empty()) {
        job.ports.prompts.Message(target.string() + ": " + reason, kArchivingError, PromptIcon::Error);
        return failed;
    }
    std::filesystem::path made;
    // The export replaces this file, and with it takes over who may read what stands there now.
    std::unique_ptr<FileDescriptor> replacement;
    const FileResult created = notes.count > 0 ? CreateReplacement(target, made, replacement) : FileResult{};
    if (!created.Ok()) {
        job.ports.prompts.Message(target.string() + ": " + created.Reason(), kArchivingError, PromptIcon::Error);
        return failed;
    }
    WrittenBackup written{.outcome = ExportNotes(notes, made, ExportedSources::All, job)};
    if (written.outcome.notes == 0) {
        ::unlink(made.c_str());
        return written;
    }
    std::vector<std::string> lacking;
    ArchiveResult result = CompareBackup(made, notes, static_cast<size_t>(written.outcome.notes), job, lacking);
    if (result.Ok()) {
        written.isIncomplete = heard.Any() || HoldsOneOf(lacking, target) || HoldsOneOf(lacking, earlier);
        if (const FileResult placed = PutInPlace(made, target, written.isIncomplete, job.ports.faults); !placed.Ok())
            result = ArchiveResult::Failure(target.string() + ": " + placed.Reason());
    }
    if (!result.Ok()) {
        ::unlink(made.c_str());
        job.ports.prompts.Message(result.reason, kArchivingError, PromptIcon::Error);
    }
    return result.Ok() ? written : failed;
}

bool IsExportArchive(const std::filesystem::path& path) {
    ZipReader zip;
    return zip.Open(path).Ok() && zip.Find(kArchiveNotesName) != nullptr;
}

}  // namespace lore
