#pragma once

#include "app/lorebinder_app.h"

namespace lore {

/// The companion program that shows, prints and saves what is handed over to it.
inline constexpr char kPrintProgram[] = "PrintSave";

/// "Save/Print Current Notes...": hands the current list over and starts the print program. True if it was started; an
/// empty list is told.
bool PrintCurrentNotes(CLorebinderApp& app);

/// The same for these notes, in their order. Each is read from its file anew; ids that the NoteBook doesn't know are
/// left out, and told. If nothing could be written, which is told, nothing is started.
bool PrintNotes(CLorebinderApp& app, const LongList& ids);

/// "Create Bibliography...": hands sources over in their order, formatted as they are set, and starts the print program
/// with the file. They change nothing of the NoteBook. With an empty list nothing happens.
bool CreateBibliography(CLorebinderApp& app, const SourceList& selected);

}  // namespace lore
