#pragma once

#include <functional>
#include <vector>

#include "notes/note_book_loader.h"
#include "notes/note_list.h"
#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "notes/open_notebook.h"
#include "ports/flow_ports.h"
#include "ports/read_context.h"

namespace lore {

/// What copying notes works on.
struct CopyJob {
    const OpenNoteBook& from;  ///< the NoteBook of the notes
    DataPaths data;
    IdCounters& counters;  ///< raised by what is given out
    const ReadContext& context;
    FlowPorts ports;
    bool syncEngaged = false;
    /// Stores the counters at once, before a note bears an id that they gave.
    std::function<void()> storeCounters;
};

/// How a copy came out.
struct CopyResult {
    static constexpr int kNothingDone = -1;

    int copied = kNothingDone;  ///< number of notes, or kNothingDone
    LongList ids;               ///< of the copies, in order
    int newer = 0;              ///< number of notes that stayed behind: the target has a newer form of them
};

/// Copies notes into another NoteBook, working on its files: attachments, authors, types, sources and categories first,
/// then the note files, then the sync log, so that a crash leaves entries that nothing uses and never a note that names
/// nothing. A copy keeps its guid and gets a new id; a note of the target with that guid goes once the copy stands, its
/// attachment files last; one that was edited later than the note stays, no copy is made then, and it is told. Each
/// file is written once. It can be stopped until the lists are written: nothing has changed then. Nothing is copied,
/// and it is told, unless all files of the target could be read: a note that it has would come in beside itself. A
/// damaged file counts as read as far as it goes.
CopyResult CopyNotesToNoteBook(const CNoteList& notes, const CDatabase& target, const CopyJob& job);

/// The command for one note: finds the target by id and says when the copy is done.
CopyResult CopyNoteToNoteBook(const CNote& note, const std::vector<CDatabase>& noteBooks, const std::string& localGUID,
                              int32_t targetId, const CopyJob& job);

}  // namespace lore
