#pragma once

#include <QMainWindow>
#include <array>

#include "app/lorebinder_app.h"
#include "app/status_panes.h"
#include "notes/filter_panels.h"
#include "notes/list_board_model.h"
#include "ui/board/board_view.h"
#include "ui/main/main_menu.h"

class QLabel;
class QSplitter;

namespace lore {

class CommandBarActions;
class ControlBar;
class FaultBar;
class FaultRetry;
class HelpActions;
class ListActions;
class MainToolBar;
class NoteActions;
class NoteBookActions;
class NoteMenu;
class OnlineActions;
enum class OptionsTab;
class Theme;

/// The frame around the board: menus, tool bar, control bar, status panes. It hands commands to the actions of their
/// kind and shows what has become of the application by them.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(CLorebinderApp& app, Theme& theme);
    ~MainWindow() override;

    /// Shows the open NoteBook once the application has loaded it.
    void ShowNoteBook();
    FaultBar* Faults() const { return faults_; }
    BoardView* Board() const { return board_; }
    ControlBar* Panels() const { return panels_; }
    MainToolBar* Tools() const { return tools_; }
    NoteActions* Notes() const { return notes_; }

    HelpActions& Help() { return *help_; }
    OnlineActions& Online() { return *online_; }

    /// Imports an archive that was dropped on the window, given on the command line or handed over by another process.
    void ImportFile(const QString& path);
    /// Makes a new note of what the clipboard holds.
    void Capture();
    /// Shows the window as it was before it was minimised, and gives it the focus.
    void BringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void MakeCentre();
    void MakeActions();
    void MakeStatusBar();
    std::vector<MenuCommand> Commands();
    void FillViewMenu(QMenu& view);
    void ConnectNotes();
    void ConnectActions();
    void ConnectTools();
    void ConnectPanels();
    void ConnectBoard();
    void RestorePlace();
    void StorePlace();
    void ShowPanelWidth();
    void ShowEmptyState(bool noNotes);
    /// The NoteBooks in the tool bar and in the board's menu, as the list is now.
    void ShowNoteBookChoices();
    void ShowState();

    /// A note above 0 becomes the focus note.
    void ListChanged(int32_t focus);
    /// The same, and the first new note comes into sight.
    void ListGrew();
    /// The notes themselves have changed: what the panels count, too.
    void FollowNotes();
    void NoteSaved(int32_t id);
    void SetZoom(int percent);
    void ZoomBy(int step);
    void SetSort(int sortId);
    void SetPanelChoice(PanelKind kind, int number);
    void GoToPane(int step);
    void AskForBibliography();
    void ShowCalendar();
    void ShowOptions(OptionsTab tab, QWidget* over = nullptr);

    CLorebinderApp& app_;
    Theme& theme_;
    ListBoardModel model_;
    MainToolBar* tools_ = nullptr;
    ControlBar* panels_ = nullptr;
    NoteActions* notes_ = nullptr;
    NoteBookActions* noteBooks_ = nullptr;
    ListActions* lists_ = nullptr;
    HelpActions* help_ = nullptr;
    OnlineActions* online_ = nullptr;
    CommandBarActions* commandBar_ = nullptr;
    NoteMenu* noteMenu_ = nullptr;
    FaultBar* faults_ = nullptr;
    FaultRetry* retry_ = nullptr;
    BoardView* board_ = nullptr;
    QSplitter* split_ = nullptr;
    std::array<QLabel*, kStatusPanes.size()> panes_{};
    int panelWidth_ = 0;    // as the settings had it last
    bool noNotes_ = false;  // what the empty board says
};

}  // namespace lore
