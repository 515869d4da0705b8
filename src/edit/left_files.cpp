#include "edit/left_files.h"

#include <algorithm>

#include "base/file_descriptor.h"
#include "edit/draft_store.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

bool IsLeft(const std::filesystem::directory_entry& entry, std::filesystem::file_time_type before) {
    std::error_code error;
    if (!IsTemporaryName(entry.path().filename().string()) ||
        entry.symlink_status(error).type() != std::filesystem::file_type::regular)
        return false;
    const std::filesystem::file_time_type written = entry.last_write_time(error);
    return !error && written < before;
}

/// A draft that holds files has a folder of its own.
void AddDraftFolders(const NoteBookPaths& paths, std::vector<std::filesystem::path>& folders) {
    const std::filesystem::path drafts = DraftStore::FolderOf(paths);
    folders.push_back(drafts);
    std::error_code error;
    for (std::filesystem::directory_iterator it(drafts, error), end; !error && it != end; it.increment(error)) {
        std::error_code unknown;
        if (it->symlink_status(unknown).type() == std::filesystem::file_type::directory)
            folders.push_back(it->path());
    }
}

}  // namespace

std::vector<std::filesystem::path> FoldersOfWriters(const DataPaths& data,
                                                    const std::vector<NoteBookPaths>& noteBooks) {
    std::vector<std::filesystem::path> folders = {data.root, data.DataFiles(), data.Databases(), data.Lexicons()};
    for (const NoteBookPaths& paths : noteBooks) {
        folders.insert(folders.end(), {paths.Folder(), paths.Notes(), paths.Attachments()});
        AddDraftFolders(paths, folders);
    }
    return folders;
}

std::vector<Repair> RemoveLeftFiles(const std::vector<std::filesystem::path>& folders,
                                    std::filesystem::file_time_type before, FaultNotice& faults) {
    std::vector<std::filesystem::path> left;
    for (const std::filesystem::path& folder : folders) {
        std::error_code error;
        for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
            if (IsLeft(*it, before))
                left.push_back(it->path());
        }
    }
    std::sort(left.begin(), left.end());
    std::vector<Repair> repairs;
    for (const std::filesystem::path& file : left) {
        const FileResult result = RemoveFile(file);
        TellFailedWrite(faults, "A temporary file could not be removed", file, result);
        if (result.Ok())
            repairs.push_back({file.string(), "was left by a program that was ended while it wrote, and was removed"});
    }
    return repairs;
}

}  // namespace lore
