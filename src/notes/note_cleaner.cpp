#include "notes/note_cleaner.h"

#include <string>
#include <sys/stat.h>
#include <utility>

#include "base/file_io.h"
#include "base/record_file.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

/// Bytes of a version and a count.
constexpr off_t kEmptyFileSize = 36;

/// Whether a file holds no note. Each file of a NoteBook is asked at each start; nearly all are larger.
bool HoldsNoNote(const std::filesystem::path& file) {
    struct stat info = {};
    std::string bytes;
    if (::stat(file.c_str(), &info) != 0 || info.st_size > kEmptyFileSize || !ReadFile(file, bytes).Ok())
        return false;
    RecordReader reader(std::move(bytes));
    ReadFixedDouble(&reader);
    return ReadFixedInt(&reader) == 0;
}

}  // namespace

void CleanNoteFiles(const NoteBookPaths& paths, FaultNotice& faults, Progress* progress) {
    if (progress)
        progress->ShowStandBy("Cleaning up note files....");
    // A folder that can't be listed is told by the load behind this.
    for (const std::string& name : ListDatFiles(paths.Notes())) {
        const std::filesystem::path file = paths.NoteFile(name);
        if (HoldsNoNote(file))
            TellFailedWrite(faults, "An empty note file could not be deleted", file, RemoveFile(file));
    }
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
