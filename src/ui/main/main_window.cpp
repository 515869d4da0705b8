#include "ui/main/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <utility>

#include "app/notebook_commands.h"
#include "app/update_check.h"
#include "ui/board/board_accessible.h"
#include "ui/controls/fault_bar.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"
#include "ui/main/control_bar.h"
#include "ui/main/fault_retry.h"
#include "ui/main/panel_page.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"

namespace lore {

namespace {

constexpr int kDefaultWidth = 1180;
constexpr int kDefaultHeight = 800;

/// What stands in the panes before a NoteBook is loaded.
constexpr const char* kEarlyPanes[] = {"NoteBook:      <>", "Not Linked", "", "Notes:        0", "In List:        0"};

}  // namespace

MainWindow::MainWindow(CLorebinderApp& app, Theme& theme)
    : app_(app), theme_(theme), model_(app.List(), app.NoteBook()), trash_(app.Ports().faults) {
    InstallBoardAccessibility();
    setObjectName("mainWindow");
    setContextMenuPolicy(Qt::NoContextMenu);  // its own would hide the tool bar for good
    setWindowTitle(ToQString(CLorebinderApp::WindowTitle()));
    tools_ = new MainToolBar(theme_, this);
    addToolBar(tools_);
    MakeCentre();
    MakeStatusBar();
    ConnectNotes();
    BuildMenuBar(*menuBar(), this, Commands());
    ConnectTools();
    ConnectPanels();
    ConnectBoard();
    setAcceptDrops(true);
    RestorePlace();
}

// What shows, such as the board, looks at the list as it goes, and that goes first.
MainWindow::~MainWindow() {
    hide();
}

void MainWindow::MakeCentre() {
    split_ = new QSplitter(this);
    split_->setObjectName("split");
    split_->setHandleWidth(1);
    split_->setChildrenCollapsible(false);
    panels_ = new ControlBar(theme_, split_);
    auto* const centre = new QWidget(split_);
    auto* const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    faults_ = new FaultBar(theme_, centre);
    retry_ = new FaultRetry(app_, *faults_, this);
    board_ = new BoardView(model_, theme_, centre);
    layout->addWidget(faults_);
    layout->addWidget(board_, 1);
    split_->addWidget(panels_);
    split_->addWidget(centre);
    split_->setStretchFactor(0, 0);
    split_->setStretchFactor(1, 1);
    setCentralWidget(split_);
    board_->SetOptions(BoardOptionsOf(app_.GetSettings(), app_.Store()));
}

void MainWindow::ShowEmptyState(bool noNotes) {
    noNotes_ = noNotes;
    BoardEmptyState state = {tr("No notes in the list"),
                             tr("Search for a word above, or double-click a category, source, key word or color at the "
                                "left to bring in its notes."),
                             tr("Show all notes"), QString::fromStdString(app_.Data().Logo().string())};
    if (noNotes)
        state = {tr("No notes yet"), tr("Write the first note of this NoteBook, or bring in notes from an archive."),
                 tr("Add Note..."), state.logo, tr("Import Notes...")};
    board_->SetEmptyState(state);
}

void MainWindow::MakeStatusBar() {
    statusBar()->setSizeGripEnabled(false);
    for (size_t i = 0; i < panes_.size(); ++i) {
        panes_[i] = new QLabel(QString::fromUtf8(kEarlyPanes[i]), this);
        panes_[i]->setTextFormat(Qt::PlainText);
        panes_[i]->setFont(theme_.Font(TextSize::Small));
        panes_[i]->setContentsMargins(kSpace * 2, 0, kSpace * 2, 0);
        statusBar()->addWidget(panes_[i], i == 1 ? 1 : 0);
    }
}

void MainWindow::ConnectTools() {
    connect(tools_, &MainToolBar::SearchRequested, this, &MainWindow::Search);
    connect(tools_, &MainToolBar::SortChosen, this, &MainWindow::SetSort);
    connect(tools_, &MainToolBar::ZoomChosen, this, &MainWindow::SetZoom);
    connect(tools_, &MainToolBar::NoteBookChosen, this, &MainWindow::SwitchNoteBook);
    connect(tools_, &MainToolBar::NewNoteRequested, notes_, &NoteActions::AddNote);
    connect(tools_, &MainToolBar::CalendarRequested, this, &MainWindow::ShowCalendar);
    connect(tools_, &MainToolBar::SyncRequested, this, &MainWindow::RunSync);
}

void MainWindow::ConnectPanels() {
    connect(panels_, &ControlBar::CommandRequested, this, &MainWindow::RunPanelOrder);
    panels_->SetAvailable([this](PanelNeed need) {
        return need == PanelNeed::FocusNote ? board_->FocusNote() > 0 : !app_.List().IsEmpty();
    });
    connect(panels_, &ControlBar::ChoiceChanged, this, &MainWindow::SetPanelChoice);
    connect(panels_, &ControlBar::PageChanged, this,
            [this](int page) { app_.GetSettings().Set(Option::ActIndCtrlBar, page); });
    connect(retry_, &FaultRetry::NoteBookLoaded, this, [this] {
        ShowNoteBook();
        notes_->OfferWaitingNotes();
    });
}

void MainWindow::ConnectBoard() {
    connect(board_, &BoardView::SelectionChanged, this, [this](int32_t id) { app_.List().SetFocusNote(id); });
    connect(board_, &BoardView::MoveRequested, this, [this](int32_t id, int32_t target) {
        app_.MoveNote(id, target);
        board_->Rebuild();
    });
    connect(board_, &BoardView::RemoveRequested, this, [this](int32_t id) {
        const int place = app_.List().PositionOf(id);
        app_.TakeOut(LongList{id});
        ListChanged(NoteInPlace(app_.List(), place));
    });
    connect(board_, &BoardView::PictureCommandRequested, this, &MainWindow::ChangePicture);
    connect(board_, &BoardView::OpenRequested, this, &MainWindow::OpenAttachment);
    connect(board_, &BoardView::ExtractRequested, this, &MainWindow::ExtractAttachment);
    connect(board_, &BoardView::LinkRequested, this, &MainWindow::OpenLink);
    board_->SetNoteCommands(
        {BoardCommand::EditNote, BoardCommand::RemoveFromList, BoardCommand::CopyToNoteBook, BoardCommand::DeleteNote});
    connect(board_, &BoardView::CopyRequested, this, &MainWindow::CopyNote);
    connect(board_, &BoardView::ZoomStepRequested, this,
            [this](int step) { SetZoom(BoardZoomStep(app_.GetSettings().Int(Option::ZoomLvl), step)); });
    connect(board_, &BoardView::FirstStepRequested, this,
            UnlessAtWork([this] { noNotes_ ? notes_->AddNote() : ShowAllNotes(); }));
    connect(board_, &BoardView::OtherStepRequested, this, UnlessAtWork([this] { ImportNotes(); }));
}

void MainWindow::RestorePlace() {
    const Settings& settings = app_.GetSettings();
    if (const std::optional<QRect> place = PlaceOnScreen(settings.Rectangle(Option::FrameRect)))
        setGeometry(*place);
    else
        resize(QSize(kDefaultWidth, kDefaultHeight).boundedTo(QApplication::primaryScreen()->size()));
    ShowPanelWidth();
    panels_->setVisible(settings.Flag(Option::ShowCtrlBar));
    panels_->SetPage(settings.Int(Option::ActIndCtrlBar));
    tools_->SetZoom(settings.Int(Option::ZoomLvl));
    tools_->SetSort(settings.Int(Option::NoteSortID));
}

void MainWindow::ShowPanelWidth() {
    const int stored = app_.GetSettings().Int(Option::SrchCtrlsWidth);
    if (std::exchange(panelWidth_, stored) != stored)
        split_->setSizes({stored, width() - split_->handleWidth() - stored});
}

void MainWindow::StorePlace() {
    Settings& settings = app_.GetSettings();
    settings.Set(Option::Maximized, isMaximized() ? 1 : 0);
    settings.Set(Option::FrameRect, PlaceToKeep(*this));
    settings.Set(Option::ShowCtrlBar, panels_->isVisible() ? 1 : 0);
    settings.Set(Option::ActIndCtrlBar, panels_->Page());
    if (panels_->isVisible())
        settings.Set(Option::SrchCtrlsWidth, panels_->width());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    StorePlace();
    RunCloseSteps(app_, syncs_);
    FaultLines failed;  // the bar closes with the window
    app_.ExitInstance(failed);
    if (!failed.Text().empty())
        app_.Ports().prompts.Message(
            "Lorebinder closes, but not everything could be kept for the next start.\n\n" + failed.Text(), "Not Saved",
            PromptIcon::Warning);
    event->accept();
}

void MainWindow::ShowNoteBook() {
    ShowPanelWidth();  // the start of a newer version sets another one
    ShowNoteBookChoices();
    panels_->Rebuild(app_);
    board_->Rebuild();
    board_->FinishShowing();
    ShowState();
    board_->setFocus();
}

void MainWindow::ListChanged(int32_t focus) {
    if (focus > 0)
        board_->RebuildAt(focus);
    else
        board_->Rebuild();
    panels_->UpdateSoon(app_, PanelPart::Counts);
    ShowState();
}

void MainWindow::ListGrew() {
    // The list is told of its focus note here, in a way that leaves the mark of the new note.
    const QSignalBlocker quiet(board_);
    board_->RebuildAt(app_.SelectFirstNew());
    panels_->UpdateSoon(app_, PanelPart::Counts);
    ShowState();
}

void MainWindow::ShowState() {
    const std::string texts[] = {app_.NoteBookPane(), app_.LinkPane(), app_.LastSyncPane(), app_.NotesPane(),
                                 app_.ListPane()};
    for (size_t i = 0; i < panes_.size(); ++i)
        panes_[i]->setText(ToQString(texts[i]));
    tools_->ShowSync(app_.GetSettings().IsSyncEngaged());
    undo_->setText(notes_->UndoText());
    ShowEmptyState(app_.IsWhole() && app_.NoteBook().TotalNoteCount() == 0);
}

}  // namespace lore
