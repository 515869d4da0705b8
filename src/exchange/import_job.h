#pragma once

#include <cstddef>
#include <functional>

#include "exchange/import_undo.h"
#include "notes/note_book_loader.h"
#include "notes/notebook_paths.h"
#include "notes/open_notebook.h"
#include "ports/flow_ports.h"
#include "ports/read_context.h"

namespace lore {

/// What an import works on.
struct ImportJob {
    OpenNoteBook& book;
    DataPaths data;
    IdCounters& counters;  ///< raised by what is given out
    const ReadContext& context;
    FlowPorts ports;
    size_t listedNotes = 0;        ///< how many notes the current list shows
    std::function<void()> reload;  ///< stores counters and options and loads the NoteBook anew
    /// Takes what UndoImport needs, and files of replaced notes wait for it; null, and they go at once.
    ImportChanges* changes = nullptr;
};

}  // namespace lore
