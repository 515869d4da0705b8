#include "app/exchange_commands.h"

#include "exchange/export_notes.h"

namespace lore {

void ExportCurrentNotes(CLorebinderApp& app) {
    const ReadContext context = app.Context();
    const AppPorts& ports = app.Ports();
    RunExportCommand(NotesOfList(app.List()), ExportScope::CurrentList,
                     {app.NoteBook(), app.Data(), context, ports.prompts, ports.progress, ports.faults});
}

bool ImportArchiveFile(CLorebinderApp& app, const std::filesystem::path& path, ImportChooser& chooser,
                       WritingCommands& writing, const std::function<void()>& changed) {
    if (app.TellIfClosed())
        return false;
    const ReadContext context = app.Context();
    const AppPorts& ports = app.Ports();
    const LongList listed = app.List().GetNoteIDs();
    IdCounters counters = app.Counters();
    ImportChanges changes;
    const ImportOutcome outcome = ImportNotes(path, chooser,
                                              {.book = app.NoteBook(),
                                               .data = app.Data(),
                                               .counters = counters,
                                               .context = context,
                                               .prompts = ports.prompts,
                                               .progress = ports.progress,
                                               .faults = ports.faults,
                                               .listedNotes = app.List().Count(),
                                               .reload =
                                                   [&] {
                                                       app.StoreCounters(counters);
                                                       app.StoreSettings();
                                                       app.ReloadNotes(listed);
                                                   },
                                               .changes = &changes});
    if (outcome.result > 0)
        writing.History().ImportDone(std::move(changes), listed);
    if (outcome.result > 0 && outcome.displayAfter)
        app.ShowNotes(outcome.ids);
    if (outcome.result > 0 && changed)
        changed();
    TellImportResult(outcome, ports.prompts);
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
