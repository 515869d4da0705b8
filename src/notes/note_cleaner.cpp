#include "notes/note_cleaner.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "base/file_number.h"
#include "base/record_file.h"
#include "notes/file_faults.h"
#include "notes/note_file_walk.h"

namespace lore {

namespace {

/// A version and a count are 36 bytes. One more tells whether anything stands behind them.
constexpr size_t kEmptyFileSize = 36;

/// The first bytes of a file; false if it can't be read. Each file of a NoteBook is asked at each start.
bool ReadStart(const std::filesystem::path& file, std::string& bytes) {
    const FileNumber number(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, kEmptyFileSize + 1> start;
    const ssize_t got = number.IsOpen() ? ::read(number.Get(), start.data(), start.size()) : -1;
    bytes.assign(start.data(), static_cast<size_t>(std::max<ssize_t>(got, 0)));
    return got >= 0;
}

void CleanFile(const std::filesystem::path& file, FaultNotice& faults) {
    std::string start;
    if (!ReadStart(file, start))
        return;
    RecordReader reader(start);
    ReadFixedDouble(&reader);
    if (ReadFixedInt(&reader) != 0)
        return;
    if (start.size() <= kEmptyFileSize)
        TellFailedWrite(faults, "An empty note file could not be deleted", file, RemoveFile(file));
    else
        faults.Tell(
            {"A note file is damaged and was left as it is", file.string(), "It counts no notes but holds more"});
}

}  // namespace

void CleanNoteFiles(const NoteBookPaths& paths, FaultNotice& faults, Progress* progress) {
    if (progress)
        progress->ShowStandBy("Cleaning up note files....");
    for (const std::filesystem::path& file : NoteFilesOf(paths.Notes(), faults))
        CleanFile(file, faults);
    if (progress)
        progress->HideStandBy();
}

LongList LoadLastViewList(const NoteBookPaths& paths, FaultNotice& faults) {
    LongList ids;
    TellFailedRead(faults, "The last note list could not be read", paths.LastViewList(),
                   LoadLongListFile(ids, paths.LastViewList()));
    return ids;
}

void SaveLastViewList(const NoteBookPaths& paths, const LongList& ids, FaultNotice& faults) {
    LongList unique;
    unique.Merge(ids);
    TellFailedWrite(faults, "The last note list could not be written", paths.LastViewList(),
                    SaveLongListFile(unique, paths.LastViewList()));
}

}  // namespace lore
