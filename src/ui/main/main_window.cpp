#include "ui/main/main_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QUrl>
#include <QVBoxLayout>
#include <cstdio>
#include <utility>

#include "app/notebook_commands.h"
#include "app/status_panes.h"
#include "ui/board/board_accessible.h"
#include "ui/controls/fault_bar.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"
#include "ui/main/card_actions.h"
#include "ui/main/command_bar_actions.h"
#include "ui/main/control_bar.h"
#include "ui/main/fault_retry.h"
#include "ui/main/help_actions.h"
#include "ui/main/list_actions.h"
#include "ui/main/note_menu.h"
#include "ui/main/notebook_actions.h"
#include "ui/main/online_actions.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"
#include "ui/ports/quit_guard.h"

namespace lore {

namespace {

constexpr int kDefaultWidth = 1180;
constexpr int kDefaultHeight = 800;

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

MainWindow::MainWindow(CLorebinderApp& app, Theme& theme)
    : app_(app), theme_(theme), model_(app.List(), app.NoteBook()) {
    InstallBoardAccessibility();
    setObjectName("mainWindow");
    setContextMenuPolicy(Qt::NoContextMenu);  // its own would hide the tool bar for good
    setWindowTitle(ToQString(MainWindowTitle()));
    tools_ = new MainToolBar(theme_, this);
    addToolBar(tools_);
    MakeCentre();
    MakeStatusBar();
    MakeActions();
    BuildMenuBar(*menuBar(), this, Commands());
    ConnectNotes();
    ConnectActions();
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

void MainWindow::MakeActions() {
    notes_ = new NoteActions(app_, theme_, *this);
    noteBooks_ = new NoteBookActions(app_, theme_, *notes_, *retry_, *this);
    lists_ = new ListActions(app_, theme_, *notes_, *board_, *this);
    new CardActions(app_, model_, *board_, theme_, *this);  // listens to the board
    help_ = new HelpActions(app_, theme_, *this);
    online_ = new OnlineActions(app_, theme_, *help_, *this);
    commandBar_ = new CommandBarActions(app_, theme_, *lists_, *noteBooks_, *board_, *this);
    noteMenu_ = new NoteMenu(*notes_, *board_, this);
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
    for (const StatusPane pane : kStatusPanes) {
        auto* const label = new QLabel(QString::fromUtf8(EarlyPaneText(pane)), this);
        label->setTextFormat(Qt::PlainText);
        label->setFont(theme_.Font(TextSize::Small));
        label->setContentsMargins(kSpace * 2, 0, kSpace * 2, 0);
        statusBar()->addWidget(label, pane == StatusPane::Link ? 1 : 0);
        panes_[static_cast<size_t>(pane)] = label;
    }
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
    RunCloseSteps(app_, online_->HasStartedSync() ? CloseReason::Sync
                        : IsQuitting()            ? CloseReason::QuitOrder
                                                  : CloseReason::User);
    FaultLines failed;  // the bar closes with the window
    app_.ExitInstance(failed);
    if (!failed.Text().empty() && IsQuitting())
        std::fputs((failed.Text() + "\n").c_str(), stderr);  // nobody may be there to close a box
    else if (!failed.Text().empty())
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

void MainWindow::FollowNotes() {
    panels_->UpdateSoon(app_, PanelPart::Entries);
    board_->setFocus();
}

void MainWindow::NoteSaved(int32_t id) {
    board_->RebuildAtSavedSoon(id);
    ShowState();
    board_->setFocus();
}

void MainWindow::ShowNoteBookChoices() {
    tools_->SetNoteBooks(app_.NoteBookChoices(), app_.NoteBook().database.guid);
    QStringList others;
    for (const CDatabase& target : CopyTargets(app_))
        others.append(ToQString(target.IsMain() ? kMainNoteBookListName : target.name));
    board_->SetOtherNoteBooks(others);
    panels_->SetOtherNoteBooks(others);
}

void MainWindow::ShowState() {
    for (const StatusPane pane : kStatusPanes)
        panes_[static_cast<size_t>(pane)]->setText(ToQString(PaneText(app_, pane)));
    tools_->ShowSync(app_.GetSettings().IsSyncEngaged());
    noteMenu_->ShowUndo();
    ShowEmptyState(app_.IsWhole() && app_.NoteBook().TotalNoteCount() == 0);
}

void MainWindow::ImportFile(const QString& path) {
    noteBooks_->ImportFile(path);
}

void MainWindow::Capture() {
    notes_->CaptureNote(QApplication::clipboard()->mimeData());
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
            ImportFile(path);
    });
}

}  // namespace lore
