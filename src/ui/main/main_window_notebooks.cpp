#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include "app/exchange_commands.h"
#include "app/notebook_commands.h"
#include "ui/controls/run_when_free.h"
#include "ui/import/import_window.h"
#include "ui/look/qt_text.h"
#include "ui/main/control_bar.h"
#include "ui/main/fault_retry.h"
#include "ui/main/main_window.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"
#include "ui/notebooks/manage_notebooks_dialog.h"

namespace lore {

namespace {

/// The export archives among dropped files.
QStringList DroppedFiles(const QMimeData& dropped) {
    QStringList paths;
    for (const QUrl& url : dropped.urls()) {
        if (url.isLocalFile() && url.fileName().endsWith(QLatin1String(".lbe"), Qt::CaseInsensitive))
            paths.append(url.toLocalFile());
    }
    return paths;
}

}  // namespace

void MainWindow::SwitchNoteBook(int index) {
    const std::vector<CDatabase> choices = app_.NoteBookChoices();
    if (index < 0 || index >= static_cast<int>(choices.size()) ||
        choices[static_cast<size_t>(index)].guid == app_.NoteBook().database.guid)
        return;
    retry_->Switch([&] { app_.SwitchNoteBook(choices[static_cast<size_t>(index)]); });
    ShowNoteBook();
    notes_->OfferWaitingNotes();
}

void MainWindow::ManageNoteBooks() {
    bool isOther = false;
    retry_->Switch([&] {
        NoteBookManagement management(app_, trash_);
        ManageNoteBooksDialog dialog(management.Model(), theme_, app_.Store(), this);
        const bool changes = dialog.exec() == QDialog::Accepted;
        isOther = management.Finish(changes);
    });
    if (isOther) {
        ShowNoteBook();
        return notes_->OfferWaitingNotes();
    }
    ShowNoteBookChoices();
    ShowState();
}

void MainWindow::ImportNotes() {
    WindowChooser chooser(app_, notes_->Commands(), theme_, this);
    ImportNotesCommand(app_, chooser, notes_->Commands(), [this] { ShowNoteBook(); });
}

void MainWindow::ImportFile(const QString& path) {
    WindowChooser chooser(app_, notes_->Commands(), theme_, this);
    ImportArchiveFile(app_, path.toStdString(), chooser, notes_->Commands(), [this] { ShowNoteBook(); });
}

void MainWindow::ShowNoteBookChoices() {
    tools_->SetNoteBooks(app_.NoteBookChoices(), app_.NoteBook().database.guid);
    QStringList others;
    for (const CDatabase& target : CopyTargets(app_))
        others.append(ToQString(target.IsMain() ? kMainNoteBookListName : target.name));
    board_->SetOtherNoteBooks(others);
    panels_->SetOtherNoteBooks(others);
}

void MainWindow::CopyNote(int32_t noteId, int noteBook) {
    const std::vector<CDatabase> targets = CopyTargets(app_);
    if (noteBook >= 0 && noteBook < static_cast<int>(targets.size()))
        CopyNoteToNoteBook(app_, noteId, targets[static_cast<size_t>(noteBook)].id);
}

void MainWindow::BringToFront() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && !DroppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    // It comes even while a command is at work, from whose hands an import would take the notes.
    RunWhenFree(*this, [this, paths = DroppedFiles(*event->mimeData())] {
        for (const QString& path : paths)
            emit ImportRequested(path);
    });
}

}  // namespace lore
