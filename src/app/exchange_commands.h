#pragma once

#include <filesystem>
#include <functional>

#include "app/lorebinder_app.h"
#include "app/writing_commands.h"
#include "exchange/import_notes.h"

namespace lore {

/// "Export Current Notes...": asks for the place and makes an archive of the notes of the current list.
void ExportCurrentNotes(CLorebinderApp& app);

/// Imports an archive, tells how it went, and shows in the current list the notes that it showed before, or those that
/// came in if the user wants so. `writing` keeps what undoing it needs. True if the NoteBook has changed.
/// @param changed  is called before it is told how it went, if the NoteBook has changed
bool ImportArchiveFile(CLorebinderApp& app, const std::filesystem::path& path, ImportChooser& chooser,
                       WritingCommands& writing, const std::function<void()>& changed = {});

/// "Import Notes...": asks for the archive first.
bool ImportNotesCommand(CLorebinderApp& app, ImportChooser& chooser, WritingCommands& writing,
                        const std::function<void()>& changed = {});

}  // namespace lore
