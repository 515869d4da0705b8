#include "ui/controls/run_when_free.h"
#include "ui/main/control_bar.h"
#include "ui/main/fault_retry.h"
#include "ui/main/list_actions.h"
#include "ui/main/main_window.h"
#include "ui/main/note_menu.h"
#include "ui/main/notebook_actions.h"
#include "ui/main/online_actions.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"
#include "ui/options/options_prop_sheet.h"

namespace lore {

void MainWindow::ConnectNotes() {
    connect(notes_, &NoteActions::NotesChanged, this, &MainWindow::ListChanged);
    connect(notes_, &NoteActions::NotesChanged, this, &MainWindow::FollowNotes);
    connect(notes_, &NoteActions::NotesAdded, this, &MainWindow::ListGrew);
    connect(notes_, &NoteActions::NotesAdded, this, &MainWindow::FollowNotes);
    connect(notes_, &NoteActions::NoteSaved, this, &MainWindow::NoteSaved);
    connect(notes_, &NoteActions::SpellOptionsRequested, this,
            [this](QWidget* over) { ShowOptions(OptionsTab::SpellChecker, over); });
    connect(noteMenu_, &NoteMenu::PasteRequested, this, &MainWindow::Capture);
    connect(noteMenu_, &NoteMenu::CutRequested, lists_, &ListActions::TakeOut);
}

void MainWindow::ConnectActions() {
    connect(lists_, &ListActions::Changed, this, &MainWindow::ListChanged);
    connect(lists_, &ListActions::Grew, this, &MainWindow::ListGrew);
    connect(lists_, &ListActions::NotesChanged, this, &MainWindow::ListChanged);
    connect(lists_, &ListActions::NotesChanged, this, &MainWindow::FollowNotes);
    connect(noteBooks_, &NoteBookActions::Opened, this, &MainWindow::ShowNoteBook);
    connect(noteBooks_, &NoteBookActions::ListChanged, this, [this] {
        ShowNoteBookChoices();
        ShowState();
    });
    connect(online_, &OnlineActions::LinkChanged, this, &MainWindow::ShowState);
    connect(retry_, &FaultRetry::NoteBookLoaded, this, [this] {
        ShowNoteBook();
        notes_->OfferWaitingNotes();
    });
}

void MainWindow::ConnectTools() {
    connect(tools_, &MainToolBar::SearchRequested, lists_, &ListActions::Search);
    connect(tools_, &MainToolBar::SortChosen, this, &MainWindow::SetSort);
    connect(tools_, &MainToolBar::ZoomChosen, this, &MainWindow::SetZoom);
    connect(tools_, &MainToolBar::NoteBookChosen, noteBooks_, &NoteBookActions::Switch);
    connect(tools_, &MainToolBar::NewNoteRequested, notes_, &NoteActions::AddNote);
    connect(tools_, &MainToolBar::CalendarRequested, this, &MainWindow::ShowCalendar);
    connect(tools_, &MainToolBar::SyncRequested, online_, &OnlineActions::RunSync);
}

void MainWindow::ConnectPanels() {
    connect(panels_, &ControlBar::CommandRequested, lists_, &ListActions::RunPanelOrder);
    panels_->SetAvailable([this](PanelNeed need) {
        return need == PanelNeed::FocusNote ? board_->FocusNote() > 0 : !app_.List().IsEmpty();
    });
    connect(panels_, &ControlBar::ChoiceChanged, this, &MainWindow::SetPanelChoice);
    connect(panels_, &ControlBar::PageChanged, this,
            [this](int page) { app_.GetSettings().Set(Option::ActIndCtrlBar, page); });
}

void MainWindow::ConnectBoard() {
    connect(board_, &BoardView::SelectionChanged, this, [this](int32_t id) { app_.List().SetFocusNote(id); });
    connect(board_, &BoardView::MoveRequested, this, [this](int32_t id, int32_t target) {
        app_.MoveNote(id, target);
        board_->Rebuild();
    });
    connect(board_, &BoardView::SavedShown, this, [this] { panels_->UpdateSoon(app_, PanelPart::Entries); });
    // A screen reader presses a card even behind a dialog.
    connect(board_, &BoardView::EditRequested, this, [this](int32_t id) {
        if (IsFree())
            notes_->EditNote(id);
    });
    connect(board_, &BoardView::DeleteRequested, notes_, &NoteActions::DeleteNote);
    connect(board_, &BoardView::RemoveRequested, lists_, &ListActions::TakeOut);
    connect(board_, &BoardView::CopyRequested, noteBooks_, &NoteBookActions::CopyNote);
    connect(board_, &BoardView::ZoomStepRequested, this, &MainWindow::ZoomBy);
    connect(board_, &BoardView::FirstStepRequested, this,
            WhereFree([this] { noNotes_ ? notes_->AddNote() : lists_->ShowAllNotes(); }));
    connect(board_, &BoardView::OtherStepRequested, this, WhereFree([this] { noteBooks_->Import(); }));
    board_->SetNoteCommands(
        {BoardCommand::EditNote, BoardCommand::RemoveFromList, BoardCommand::CopyToNoteBook, BoardCommand::DeleteNote});
}

}  // namespace lore
