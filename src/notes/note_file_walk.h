#pragma once

#include <filesystem>
#include <functional>
#include <stop_token>
#include <vector>

#include "base/file_io.h"
#include "notes/note_copies.h"
#include "notes/note_file.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// How many threads read the note files of a NoteBook.
inline constexpr int kReadThreads = 2;

/// Reads one note file. May be called from several threads, once for each file.
using NoteFileTask = std::function<void(size_t file, NoteFileReader& notes)>;
/// Is told that a file has been read. Called in the order of the files, on the thread of the caller.
using NoteFileDone = std::function<void(size_t file, const FileResult& result)>;

/// Runs `task` over note files, on the caller's thread and `threads` - 1 others. Whatever task stores for its file is
/// seen by `done` for that file. A file that doesn't open shows the task no notes.
/// Once `stop` is requested, the files that are left are passed over in silence. `parts` is what a head has to hold.
void WalkNoteFiles(const std::vector<std::filesystem::path>& files, const ReadContext& context, int threads,
                   const NoteFileTask& task, const NoteFileDone& done, const std::stop_token& stop = {},
                   HeadParts parts = HeadParts::All);

/// The full paths of the note files of a folder, by name in byte order. False, told, and none if the folder is there
/// and can't be read: who writes must not take it for an empty one.
bool ListNoteFiles(const std::filesystem::path& notesFolder, FaultNotice& faults,
                   std::vector<std::filesystem::path>& files);
/// The same for those who only have less to do or to show then.
std::vector<std::filesystem::path> NoteFilesOf(const std::filesystem::path& notesFolder, FaultNotice& faults);

/// What there is to tell of a file in which notes were looked for: that it couldn't be read, that it is damaged, which
/// `damage` says in NoteFileReader's words or is null, or that it lacks some of the notes. True if anything was told.
bool TellOfNoteFile(FaultNotice& faults, const std::filesystem::path& file, const FileResult& opened,
                    const char* damage, bool lacksNotes);

/// True for a note that stands in the file that its first source or its creation day names.
bool IsAtHome(const CNote& note, const std::filesystem::path& file);
/// The note that the reader of a file went to, as one of several copies.
NoteCopy CopyOf(NoteFileReader& reader, const std::filesystem::path& file);

}  // namespace lore
