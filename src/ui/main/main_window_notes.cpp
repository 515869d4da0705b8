#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>

#include "app/print_commands.h"
#include "bibliography/source_selection.h"
#include "ui/bibliography/select_sources_dlg.h"
#include "ui/controls/run_when_free.h"
#include "ui/main/control_bar.h"
#include "ui/main/fault_retry.h"
#include "ui/main/main_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/options/options_prop_sheet.h"

namespace lore {

void MainWindow::ConnectNotes() {
    notes_ = new NoteActions(app_, theme_, *this);
    const auto follow = [this] {
        panels_->UpdateSoon(app_, PanelPart::Entries);
        board_->setFocus();
    };
    connect(notes_, &NoteActions::NotesChanged, this, &MainWindow::ListChanged);
    connect(notes_, &NoteActions::NotesChanged, this, follow);
    connect(notes_, &NoteActions::NotesAdded, this, &MainWindow::ListGrew);
    connect(notes_, &NoteActions::NotesAdded, this, follow);
    connect(notes_, &NoteActions::NoteSaved, this, &MainWindow::NoteSaved);
    connect(notes_, &NoteActions::SpellOptionsRequested, this,
            [this](QWidget* over) { ShowOptions(OptionsTab::SpellChecker, over); });
    connect(board_, &BoardView::SavedShown, this, [this] { panels_->UpdateSoon(app_, PanelPart::Entries); });
    connect(board_, &BoardView::EditRequested, notes_, &NoteActions::EditNote);
    connect(board_, &BoardView::DeleteRequested, notes_, &NoteActions::DeleteNote);
    connect(this, &MainWindow::ImportRequested, this, &MainWindow::ImportFile);
    connect(this, &MainWindow::CaptureRequested, notes_,
            [this] { notes_->CaptureNote(QApplication::clipboard()->mimeData()); });
}

std::vector<MenuCommand> MainWindow::FocusNoteCommands() {
    using Key = QKeySequence;
    constexpr auto kMenu = MainMenu::Notes;
    const auto focus = [this] { return board_->FocusNote(); };
    return {{kMenu, tr("&Edit Note..."), {Key(Qt::Key_F2)}, [this, focus] { notes_->EditNote(focus()); }},
            {kMenu, tr("&Delete Note"), {Key(Key::Delete)}, [this, focus] { notes_->DeleteNote(focus()); }},
            {kMenu, tr("Copy Note Te&xt"), {Key(Key::Copy), Key("Ctrl+Ins")}, [this] { CopyFocusNote(); }},
            {kMenu, tr("C&ut Note From List"), {Key(Key::Cut), Key("Shift+Del")}, [this] { CutFocusNote(); }},
            {kMenu, tr("&Move Up"), {Key("Alt+Up")}, [this] { board_->MoveFocusNote(-1); }},
            {kMenu, tr("Move Do&wn"), {Key("Alt+Down")}, [this] { board_->MoveFocusNote(1); }}};
}

void MainWindow::FillNoteMenu(QMenu& menu) {
    using Key = QKeySequence;
    constexpr auto kMenu = MainMenu::Notes;
    // In fields and lists these keys mean other things.
    const auto add = [&](const std::vector<MenuCommand>& commands) {
        std::vector<QAction*> actions;
        for (const MenuCommand& command : commands) {
            actions.push_back(menu.addAction(command.text, this, UnlessAtWork(command.run)));
            actions.back()->setShortcuts(command.keys);
            actions.back()->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            board_->addAction(actions.back());
        }
        return actions;
    };
    const std::vector<QAction*> ofNote = add(FocusNoteCommands());
    add({{kMenu, tr("&Paste As New Note..."), {Key(Key::Paste), Key("Shift+Ins")}, [this] {
              emit CaptureRequested();
          }}});
    undo_ =
        add({{kMenu, notes_->UndoText(), {Key(Key::Undo), Key("Alt+Backspace")}, [this] { notes_->Undo(); }}}).back();
    connect(&menu, &QMenu::aboutToShow, this, [this, ofNote] {
        for (QAction* const action : ofNote)
            action->setEnabled(board_->FocusNote() > 0);
        undo_->setEnabled(notes_->WhatToUndo() != WritingCommands::NextUndo::None);
    });
    // A shortcut works only while its action is enabled, whatever the menu showed last.
    connect(&menu, &QMenu::aboutToHide, this, [this, ofNote] {
        for (QAction* const action : ofNote)
            action->setEnabled(true);
        undo_->setEnabled(true);
    });
}

bool MainWindow::CopyFocusNote() {
    std::unique_ptr<QMimeData> copied = board_->FocusNote() > 0 ? notes_->CopyNote(board_->FocusNote()) : nullptr;
    if (!copied)
        return false;
    QApplication::clipboard()->setMimeData(copied.release());
    return true;
}

void MainWindow::CutFocusNote() {
    const int32_t id = board_->FocusNote();
    if (CopyFocusNote())
        emit board_->RemoveRequested(id);
}

void MainWindow::NoteSaved(int32_t id) {
    board_->RebuildAtSavedSoon(id);
    ShowState();
    board_->setFocus();
}

void MainWindow::AskForBibliography() {
    SourceSelection selection(app_.NoteBook().sources, app_.NoteBook().authors);
    CSelectSourcesDlg dialog(selection, theme_, app_.Store(), this);
    if (dialog.exec() == kSourcesSelected)
        retry_->Run([this, chosen = selection.Selected()] { return CreateBibliography(app_, chosen); });
}

}  // namespace lore
