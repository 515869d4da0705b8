#pragma once

#include <functional>
#include <memory>

#include "notes/board_options.h"
#include "notes/notebook_paths.h"
#include "printsave/hand_over.h"
#include "printsave/print_content.h"

namespace lore {

/// Where a window has its content from: at once its beginning, enough for the first pages, and then all of it.
struct ContentSource {
    PrintContent beginning;
    /// Makes all of it; may run on another thread, and several times. Empty if the beginning is all.
    std::function<PrintContent()> makeWhole = {};

    PrintContent Whole() const { return makeWhole ? makeWhole() : beginning; }
};

ContentSource SourceOfBibliography(std::shared_ptr<const HandOver> read);
/// Notes as the options show them, with the pictures among their attachments.
ContentSource SourceOfNotes(std::shared_ptr<const HandOver> read, const NoteBookPaths& paths,
                            const BoardOptions& options);

}  // namespace lore
