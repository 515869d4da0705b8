#include "notes/note_file_walk.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "base/dat_files.h"
#include "base/helper_threads.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

/// The files of one walk, which its threads take one after the other.
class SharedWalk {
public:
    SharedWalk(const std::vector<std::filesystem::path>& files, const NoteFileTask& task, const std::stop_token& stop)
        : files_(files), task_(task), stop_(stop), results_(files.size()), ready_(files.size(), false) {}

    /// Reads the next file that nobody has taken, with the reader of this thread; false if there is none.
    bool ReadOne(NoteFileReader& notes) {
        const size_t file = next_.fetch_add(1);
        if (file >= files_.size())
            return false;
        FileResult result;
        if (!stop_.stop_requested()) {
            result = notes.Open(files_[file]);
            task_(file, notes);
        }
        const std::scoped_lock lock(mutex_);
        results_[file] = result;
        ready_[file] = true;
        changed_.notify_one();
        return true;
    }

    /// Waits for a file and gives its result; with `wait` off, null unless it is ready.
    const FileResult* Result(size_t file, bool wait) {
        std::unique_lock lock(mutex_);
        if (wait)
            changed_.wait(lock, [&] { return ready_[file]; });
        return ready_[file] ? &results_[file] : nullptr;
    }

private:
    const std::vector<std::filesystem::path>& files_;
    const NoteFileTask& task_;
    const std::stop_token& stop_;
    std::atomic<size_t> next_{0};
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<FileResult> results_;
    std::vector<bool> ready_;
};

}  // namespace

void WalkNoteFiles(const std::vector<std::filesystem::path>& files, const ReadContext& context, int threads,
                   const NoteFileTask& task, const NoteFileDone& done, const std::stop_token& stop, HeadParts parts) {
    SharedWalk walk(files, task, stop);
    const size_t wanted = static_cast<size_t>(std::max(threads, 1)) - 1;
    const std::vector<std::jthread> helpers = StartHelpers(std::min(wanted, files.size()), [&walk, &context, parts] {
        NoteFileReader notes(context, parts);
        while (walk.ReadOne(notes)) {
        }
    });
    size_t told = 0;
    const auto tellReady = [&](bool wait) {
        while (told < files.size()) {
            const FileResult* result = walk.Result(told, wait);
            if (!result)
                return;
            done(told++, *result);
        }
    };
    NoteFileReader notes(context, parts);
    while (walk.ReadOne(notes))
        tellReady(false);
    tellReady(true);
}

bool ListNoteFiles(const std::filesystem::path& notesFolder, FaultNotice& faults,
                   std::vector<std::filesystem::path>& files) {
    std::vector<std::string> names;
    const FileResult result = ReadDatFiles(notesFolder, names);
    TellFailedRead(faults, kNotesFolderUnread, notesFolder, result);
    files.clear();
    for (const std::string& name : names)
        files.push_back(notesFolder / name);
    return result.Ok() || result.Missing();
}

std::vector<std::filesystem::path> NoteFilesOf(const std::filesystem::path& notesFolder, FaultNotice& faults) {
    std::vector<std::filesystem::path> files;
    ListNoteFiles(notesFolder, faults, files);
    return files;
}

bool TellOfNoteFile(FaultNotice& faults, const std::filesystem::path& file, const FileResult& opened,
                    const char* damage, bool lacksNotes) {
    const FileResult seen = LookedBehindLinks(file, opened);
    if (!seen.Ok() && (lacksNotes || !seen.Missing()))
        faults.Tell({kNoteFileUnread, PlaceOfFault(file, seen).string(), seen.Reason()});
    else if (damage)
        faults.Tell(
            {"A note file is damaged; what could be read of it was taken", file.string(), std::string("it ") + damage});
    else if (lacksNotes)
        faults.Tell({"Notes are no longer in their file", file.string(), "the file was changed"});
    else
        return false;
    return true;
}

bool IsAtHome(const CNote& note, const std::filesystem::path& file) {
    return file.filename().native() == GetNoteFileName(note);
}

NoteCopy CopyOf(NoteFileReader& reader, const std::filesystem::path& file) {
    const CNote& head = reader.Head();
    return {head.id, IsAtHome(head, file), reader.IsNoteWhole(), head.dateEdited.Seconds(),
            std::hash<std::string>()(file.native())};
}

}  // namespace lore
