#include "app/notebook_commands.h"

#include <algorithm>

#include "app/online_commands.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

ManagerPorts PortsOf(CLorebinderApp& app, NoteBookTrash& trash) {
    const AppPorts& ports = app.Ports();
    const auto clearOnlineLink = [&app](const CDatabase& noteBook, const SyncLink& link) {
        FreeOnlineNoteBook(OnlineSession(app).World(), link, noteBook.guid);
    };
    return {ports.prompts, ports.progress, ports.faults, ports.wait, ports.random, clearOnlineLink, &trash};
}

/// Runs a backup; the list of NoteBooks is read again after it.
template <typename Command>
void RunBackup(CLorebinderApp& app, Command command) {
    const ReadContext context = app.Context();
    command(BackupJob{.data = app.Data(),
                      .settings = app.GetSettings(),
                      .context = context,
                      .ports = app.Flow(),
                      .storeSettings = [&app] { app.StoreSettings(); }});
    app.ReloadNoteBooks();
}

template <typename Command>
void RunCopy(CLorebinderApp& app, Command command) {
    const ReadContext context = app.Context();
    IdCounters counters = app.Counters();
    command(CopyJob{.from = app.NoteBook(),
                    .data = app.Data(),
                    .counters = counters,
                    .context = context,
                    .ports = app.Flow(),
                    .syncEngaged = app.GetSettings().IsSyncEngaged(),
                    .storeCounters = [&] { app.StoreCounters(counters); }});
}

}  // namespace

NoteBookManagement::NoteBookManagement(CLorebinderApp& app, NoteBookTrash& trash)
    : app_(app),
      context_(app.Context()),
      ports_(PortsOf(app, trash)),
      manager_(app.Data(), app.GetSettings().Text(Option::LocalGUID), ports_),
      model_(manager_, app.Data(), MainNoteBook(app.GetSettings().Text(Option::LocalGUID)),
             app.NoteBook().database.guid, context_, ports_) {
    model_.Open();
}

bool NoteBookManagement::Finish(bool changeTo) {
    if (model_.HasDeletedOpen())
        app_.CloseDeletedNoteBook();
    app_.ReloadNoteBooks();
    if (changeTo)
        app_.SwitchNoteBook(model_.Chosen());
    else if (model_.HasRestoredOpen())
        app_.SwitchNoteBook(CDatabase(app_.NoteBook().database));
    return changeTo || model_.HasDeletedOpen() || model_.HasRestoredOpen();
}

void BackupCurrentNoteBook(CLorebinderApp& app) {
    RunBackup(app, [&app](const BackupJob& job) { BackupCurrentNoteBook(app.NoteBook().database, job); });
}

void BackupAllNoteBooks(CLorebinderApp& app) {
    RunBackup(app, [](const BackupJob& job) { BackupAllNoteBooks(job); });
}

void RunAutoBackup(CLorebinderApp& app) {
    RunBackup(app, [](const BackupJob& job) { RunAutoBackup(job); });
}

std::vector<CDatabase> CopyTargets(const CLorebinderApp& app) {
    std::vector<CDatabase> targets = app.NoteBookChoices();
    std::erase_if(targets, [&](const CDatabase& target) { return IsSameNoteBook(target, app.NoteBook().database); });
    return targets;
}

void CopyNoteToNoteBook(CLorebinderApp& app, int32_t noteId, int32_t targetId) {
    const ReadContext context = app.Context();
    const std::optional<CNote> note = FindNote(app.NoteBook().index, noteId, context, app.Ports().faults);
    if (!note || app.TellIfClosed())
        return;
    RunCopy(app, [&](const CopyJob& job) {
        CopyNoteToNoteBook(*note, app.NoteBooks(), app.GetSettings().Text(Option::LocalGUID), targetId, job);
    });
}

void CopyNotesOfNoteBook(CLorebinderApp& app, const CNoteList& notes, const CDatabase& target) {
    RunCopy(app, [&](const CopyJob& job) {
        const CopyResult result = CopyNotesToNoteBook(notes, target, job);
        if (result.copied > 0)
            job.ports.prompts.Message("Your  *" + std::to_string(result.copied) +
                                          "*  notes have been successfully copied to " + target.name + "!",
                                      "Finished!", PromptIcon::Information);
    });
}

void RunCloseSteps(CLorebinderApp& app, CloseReason reason) {
    if (app.GetSettings().IsBackupEnabled())
        RunBackup(app, [&](const BackupJob& job) { AutoBackupAtClose(job, reason != CloseReason::QuitOrder); });
    if (reason != CloseReason::Sync)
        SyncAtClose(app);
}

}  // namespace lore
