#include "ui/main/notebook_actions.h"

#include "app/exchange_commands.h"
#include "app/notebook_commands.h"
#include "ui/import/import_window.h"
#include "ui/main/fault_retry.h"
#include "ui/note_editor/note_actions.h"
#include "ui/notebooks/manage_notebooks_dialog.h"

namespace lore {

NoteBookActions::NoteBookActions(CLorebinderApp& app, Theme& theme, NoteActions& notes, FaultRetry& retry,
                                 QWidget& window)
    : QObject(&window),
      app_(app),
      theme_(theme),
      notes_(notes),
      retry_(retry),
      window_(window),
      trash_(app.Ports().faults) {}

void NoteBookActions::Switch(int index) {
    const std::vector<CDatabase> choices = app_.NoteBookChoices();
    if (index < 0 || index >= static_cast<int>(choices.size()) ||
        choices[static_cast<size_t>(index)].guid == app_.NoteBook().database.guid)
        return;
    retry_.Switch([&] { app_.SwitchNoteBook(choices[static_cast<size_t>(index)]); });
    emit Opened();
    notes_.OfferWaitingNotes();
}

void NoteBookActions::Manage() {
    bool isOther = false;
    retry_.Switch([&] {
        NoteBookManagement management(app_, trash_);
        ManageNoteBooksDialog dialog(management.Model(), theme_, app_.Store(), &window_);
        const bool changes = dialog.exec() == QDialog::Accepted;
        isOther = management.Finish(changes);
    });
    if (!isOther)
        return emit ListChanged();
    emit Opened();
    notes_.OfferWaitingNotes();
}

void NoteBookActions::Import() {
    WindowChooser chooser(app_, notes_.Commands(), theme_, &window_);
    ImportNotesCommand(app_, chooser, notes_.Commands(), [this] { emit Opened(); });
}

void NoteBookActions::ImportFile(const QString& path) {
    WindowChooser chooser(app_, notes_.Commands(), theme_, &window_);
    ImportArchiveFile(app_, path.toStdString(), chooser, notes_.Commands(), [this] { emit Opened(); });
}

void NoteBookActions::CopyNote(int32_t noteId, int target) {
    const std::vector<CDatabase> targets = CopyTargets(app_);
    if (target >= 0 && target < static_cast<int>(targets.size()))
        CopyNoteToNoteBook(app_, noteId, targets[static_cast<size_t>(target)].id);
}

}  // namespace lore
