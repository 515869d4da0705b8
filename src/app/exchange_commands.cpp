#include "app/exchange_commands.h"

#include "exchange/export_notes.h"

namespace lore {

void ExportCurrentNotes(CLorebinderApp& app) {
    const ReadContext context = app.Context();
    RunExportCommand(NotesOfList(app.List()), ExportScope::CurrentList,
                     {.book = app.NoteBook(), .data = app.Data(), .context = context, .ports = app.Flow()});
}

bool ImportArchiveFile(CLorebinderApp& app, const std::filesystem::path& path, ImportChooser& chooser,
                       WritingCommands& writing, const std::function<void()>& changed) {
    if (app.TellIfClosed())
        return false;
    const ReadContext context = app.Context();
    const LongList listed = app.List().GetNoteIDs();
    IdCounters counters = app.Counters();
    ImportChanges changes;
    const ImportOutcome outcome = ImportNotes(path, chooser,
                                              {.book = app.NoteBook(),
                                               .data = app.Data(),
                                               .counters = counters,
                                               .context = context,
                                               .ports = app.Flow(),
                                               .listedNotes = app.List().Count(),
                                               .reload =
                                                   [&] {
                                                       app.StoreCounters(counters);
                                                       app.StoreSettings();
                                                       app.ReloadNotes(listed);
                                                   },
                                               .changes = &changes});
    if (outcome.result > 0)
        writing.History().ImportDone(std::move(changes), outcome.displayAfter ? std::optional(listed) : std::nullopt);
    if (outcome.result > 0 && outcome.displayAfter)
        app.ShowNotes(outcome.ids);
    if (outcome.result > 0 && changed)
        changed();
    TellImportResult(outcome, app.Ports().prompts);
    return outcome.result > 0;
}

bool ImportNotesCommand(CLorebinderApp& app, ImportChooser& chooser, WritingCommands& writing,
                        const std::function<void()>& changed) {
    if (app.TellIfClosed())
        return false;
    const auto path = AskForArchive(app.Ports().prompts);
    return path && ImportArchiveFile(app, *path, chooser, writing, changed);
}

}  // namespace lore
