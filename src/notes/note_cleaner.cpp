#include "notes/note_cleaner.h"

#include <fstream>
#include <string>

#include "base/record_file.h"
#include "notes/file_faults.h"
#include "notes/note_file_walk.h"

namespace lore {

namespace {

/// A version and a count are 36 bytes. One more tells whether anything stands behind them.
constexpr size_t kEmptyFileSize = 36;

/// The first bytes of a file; false if it doesn't open.
bool ReadStart(const std::filesystem::path& file, std::string& bytes) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return false;
    bytes.resize(kEmptyFileSize + 1);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(stream.gcount()));
    return true;
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
    for (const std::filesystem::path& file : NoteFilesOf(paths.Notes()))
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
