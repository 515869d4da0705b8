#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "notes/note.h"
#include "notes/note_finder.h"
#include "notes/open_notebook.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/read_context.h"
#include "settings/installation.h"

namespace lore {

/// What a load may change on the disk and in the counters.
enum class LoadMode {
    Full,  ///< as the desktop opens a NoteBook: converts old categories, writes Sources.dat back, moves the counters on
    Mending,   ///< the same, for a repair, which tells itself what becomes of damaged files
    ReadOnly,  ///< changes no byte and no counter
};

/// Where a note record was met: the position of its file among LoadReport::files, and its number among the notes of it.
struct NotePlace {
    uint32_t file = 0;
    uint32_t record = 0;
    bool operator==(const NotePlace&) const = default;
};

/// A note of the NoteBook and its place. Of a note that stands twice one copy shows.
struct ShownNote {
    int32_t id = 0;
    NotePlace place;
};

/// Takes the rich texts while the files are read, so that nothing has to read them again.
class NoteTextSink {
public:
    virtual ~NoteTextSink() = default;
    /// Before the first text: how many files there are. On the caller's thread.
    virtual void Begin(size_t fileCount) = 0;
    /// One record, also one that won't show. On a worker thread; the records of one file come in order from one thread,
    /// those of different files at the same time. The text lives during the call only.
    virtual void Take(NotePlace place, int32_t noteId, std::string_view rtfText) = 0;
    /// After the last record of a file, on the same thread. May do nothing.
    virtual void EndFile(size_t) {}
    /// After the last text: the notes that show, in loading order. On the caller's thread.
    virtual void Finish(const std::vector<ShownNote>& shown) = 0;
};

/// How to load, and what to collect on the way. What is pointed to may be null, and outlives the load.
struct LoadOptions {
    LoadMode mode = LoadMode::Full;
    int threads = 2;  ///< that read files; 1 reads on the caller's thread. The result is the same.
    Progress* progress = nullptr;
    NoteTextSink* texts = nullptr;
    bool keepHeads = false;  ///< fill LoadReport::heads
    /// For a change of these notes: they alone show and get a place in the index, and no list of the picture holds
    /// notes. What is written and how the counters move on is the same. Not with heads or texts.
    std::optional<std::unordered_set<int32_t>> only = {};
};

/// What a load has met beside the picture itself.
struct LoadReport {
    std::vector<std::string> files;  ///< names of all note files in byte order, the order of reading
    std::vector<ShownNote> shown;    ///< the notes in loading order: file by file, in file order
    std::vector<CNote> heads;        ///< the same notes without their texts, if asked for
    bool listed = true;              ///< false if the folder of the notes couldn't be read: none shows, none is lost
    bool converted = false;          ///< there was no Categories.dat, the forest was built from the notes
    /// Names of the files that were read but hold more than could be taken from them, or that are missing though the
    /// authors or sources in them are named, and that weren't told of: the lists, the note files, missing sources.
    std::vector<std::string> damaged;
};

/// Builds the picture of the NoteBook whose paths `book` holds; everything else in it is replaced. Files that are
/// missing or damaged read as far as they go; what can't be read or written at all is told to `faults`. The caller
/// stores the counters at once.
LoadReport LoadNoteBook(OpenNoteBook& book, IdCounters& counters, const ReadContext& context, FaultNotice& faults,
                        const LoadOptions& options);

/// Moves the counters on as a full load does at its end, after all that the NoteBook holds: for one that has got more
/// since. MaxNoteID is the last id that was given out.
void MoveCountersOn(const OpenNoteBook& book, IdCounters& counters);

}  // namespace lore
