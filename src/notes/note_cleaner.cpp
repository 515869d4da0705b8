#include "notes/note_cleaner.h"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <utility>

#include "base/file_descriptor.h"
#include "base/file_io.h"
#include "base/record_file.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

constexpr char kUndeleted[] = "An empty note file could not be deleted";

/// Whether a file may hold no note. Each file of a NoteBook is asked at each start, so by the shortest way.
bool IsSmall(const FileDescriptor& folder, const std::string& name) {
    struct stat info = {};
    return ::fstatat(folder.Get(), name.c_str(), &info, 0) == 0 && std::cmp_less_equal(info.st_size, kEmptyFileSize);
}

bool HoldsNoNote(const std::filesystem::path& file) {
    std::string bytes;
    if (!ReadFile(file, bytes).Ok())
        return false;
    RecordReader reader(std::move(bytes));
    ReadFixedDouble(&reader);
    return ReadFixedInt(&reader) == 0;
}

}  // namespace

void CleanNoteFiles(const NoteBookPaths& paths, FaultNotice& faults, Progress* progress) {
    if (progress)
        progress->ShowStandBy("Cleaning up note files....");
    // A folder that can't be listed is told by the load after this.
    const std::filesystem::path notes = paths.Notes();
    bool isChanged = false;
    const FileDescriptor folder(::open(notes.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (const std::string& name : ListDatFiles(notes)) {
        if (!IsSmall(folder, name))
            continue;
        const std::filesystem::path file = paths.NoteFile(name);
        if (!HoldsNoNote(file))
            continue;
        const FileResult dropped = DropFile(file);
        isChanged = isChanged || dropped.Ok();
        TellFailedWrite(faults, kUndeleted, file, dropped);
    }
    if (isChanged)
        TellFailedWrite(faults, kUndeleted, notes, FlushFolder(notes));
    if (progress)
        progress->HideStandBy();
}

LongList LoadLastViewList(const NoteBookPaths& paths, FaultNotice& faults) {
    LongList ids;
    TellFailedRead(faults, kLastListUnread, paths.LastViewList(), LoadLongListFile(ids, paths.LastViewList()));
    return ids;
}

void SaveLastViewList(const NoteBookPaths& paths, const LongList& ids, FaultNotice& faults) {
    LongList unique;
    unique.Merge(ids);
    TellFailedWrite(faults, "The last note list could not be written", paths.LastViewList(),
                    SaveLongListFile(unique, paths.LastViewList()));
}

}  // namespace lore
