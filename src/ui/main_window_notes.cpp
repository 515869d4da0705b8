#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

#include "app/print_commands.h"
#include "bibliography/source_selection.h"
#include "ui/bibliography/select_sources_dlg.h"
#include "ui/control_bar.h"
#include "ui/main_window.h"
#include "ui/note_editor/note_actions.h"

namespace lore {

void MainWindow::ConnectNotes() {
    notes_ = new NoteActions(app_, theme_, *this);
    connect(notes_, &NoteActions::NotesChanged, this, &MainWindow::NotesChanged);
    connect(board_, &BoardView::EditRequested, notes_, &NoteActions::EditNote);
    connect(board_, &BoardView::DeleteRequested, notes_, &NoteActions::DeleteNote);
    connect(this, &MainWindow::ImportRequested, this, &MainWindow::ImportFile);
    connect(this, &MainWindow::CaptureRequested, notes_,
            [this] { notes_->CaptureNote(QApplication::clipboard()->mimeData()); });
    board_->SetNoteCommands({BoardCommand::EditNote, BoardCommand::RemoveFromList, BoardCommand::DeleteNote});
}

void MainWindow::FillNoteMenu(QMenu& menu) {
    QAction* const edit = menu.addAction(tr("&Edit Note..."), this, [this] { notes_->EditNote(board_->FocusNote()); });
    QAction* const remove =
        menu.addAction(tr("&Delete Note"), this, [this] { notes_->DeleteNote(board_->FocusNote()); });
    QAction* const undo = menu.addAction(tr("&Undo Delete"), this, [this] { notes_->Undo(); });
    const std::pair<QAction*, QKeySequence> keys[] = {
        {edit, QKeySequence(Qt::Key_F2)}, {remove, QKeySequence::Delete}, {undo, QKeySequence::Undo}};
    for (const auto& [action, key] : keys) {
        // In fields and lists these keys mean other things.
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        board_->addAction(action);
    }
    undo->setShortcuts({QKeySequence(QKeySequence::Undo), QKeySequence(Qt::ALT | Qt::Key_Backspace)});
    connect(&menu, &QMenu::aboutToShow, this, [this, edit, remove, undo] {
        edit->setEnabled(board_->FocusNote() > 0);
        remove->setEnabled(board_->FocusNote() > 0);
        const WritingCommands::NextUndo next = notes_->WhatToUndo();
        undo->setEnabled(next != WritingCommands::NextUndo::None);
        undo->setText(next == WritingCommands::NextUndo::Import ? tr("&Undo Import") : tr("&Undo Delete"));
    });
    // A shortcut works only while its action is enabled, whatever the menu showed last.
    connect(&menu, &QMenu::aboutToHide, this, [edit, remove, undo] {
        for (QAction* const action : {edit, remove, undo})
            action->setEnabled(true);
    });
}

void MainWindow::NotesChanged(int32_t focus, bool isNew) {
    board_->Rebuild();
    panels_->Rebuild(app_);
    RefreshPanes();
    if (isNew) {
        GoToFirstNew();
    } else if (focus > 0) {
        board_->RefreshNote(focus);
        board_->SetFocusNote(focus);
    }
    board_->setFocus();
}

void MainWindow::AskForBibliography() {
    SourceSelection selection(app_.NoteBook().sources, app_.NoteBook().authors);
    CSelectSourcesDlg dialog(selection, theme_, app_.Store(), this);
    if (dialog.exec() == kSourcesSelected)
        CreateBibliography(app_, selection.Bibliography());
}

}  // namespace lore
