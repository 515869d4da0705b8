#pragma once

#include <QMainWindow>
#include <array>
#include <filesystem>
#include <memory>

#include "app/lorebinder_app.h"
#include "app/panel_actions.h"
#include "app/picture_commands.h"
#include "notebooks/notebook_trash.h"
#include "notes/filter_panels.h"
#include "notes/list_board_model.h"
#include "ui/board/board_view.h"
#include "ui/main/main_menu.h"

class QLabel;
class QSplitter;

namespace lore {

class ControlBar;
class FaultBar;
class FaultRetry;
class MainToolBar;
class NoteActions;
enum class OptionsTab;
class Theme;
class UpdateCheck;
class UpdateSource;
struct FindableItem;
struct HelpWorld;

/// The frame around the board: menus, tool bar, control bar, status panes. It hands commands to the application and
/// shows what has become of them.
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

    void Search(const QString& text, SearchScope scope);
    /// What the menu "Help" has: the manual (empty if there is none), and what asks for updates (may be null).
    void SetHelp(const std::filesystem::path& manual, UpdateSource* updates);
    /// `daily` for the check of the start, which speaks only of a newer version.
    void CheckForUpdates(bool daily);

    /// Checks the link to the online account in a moment, once no dialog is open. For the end of the start.
    void CheckLinkSoon();
    /// Shows the window as it was before it was minimised, and gives it the focus.
    void BringToFront();

signals:
    /// An export archive was dropped on the window, given on the command line or handed over by another process.
    void ImportRequested(const QString& path);
    /// The clipboard is to be pasted into the open note editor, or into a new note.
    void CaptureRequested();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void MakeCentre();
    std::vector<MenuCommand> Commands();
    void FillViewMenu(QMenu& view);
    std::vector<MenuCommand> FocusNoteCommands();
    void FillNoteMenu(QMenu& menu);
    bool CopyFocusNote();
    void CutFocusNote();
    void ConnectNotes();
    void NoteSaved(int32_t id);
    void MakeStatusBar();
    void ConnectTools();
    void ConnectPanels();
    void ConnectBoard();
    void RestorePlace();
    void StorePlace();
    void ShowPanelWidth();
    void ShowEmptyState(bool noNotes);

    /// A note above 0 becomes the focus note.
    void ListChanged(int32_t focus = -1);
    /// The same, and the first new note comes into sight.
    void ListGrew();
    void ShowState();
    void SetZoom(int percent);
    void SetSort(int sortId);
    void ShowAllNotes();
    void SwitchNoteBook(int index);
    void ManageNoteBooks();
    void ImportNotes();
    void AskForBibliography();
    void ImportFile(const QString& path);
    /// The NoteBooks in the tool bar and in the board's menu, as the list is now.
    void ShowNoteBookChoices();
    void CheckLink();
    void RunSync();
    void SetUpSync();
    void LinkNoteBook();
    void CloseForSync(bool started);
    void ShowCalendar();
    void CopyNote(int32_t noteId, int noteBook);
    void RunPanelOrder(const PanelOrder& order);
    void EditCategoryTrees();
    void SetPanelChoice(PanelKind kind, int number);
    void ChangePicture(int32_t noteId, int attachment, PictureCommand command, const PictureRoom& room);
    void OpenAttachment(int32_t noteId, int attachment);
    void ExtractAttachment(int32_t noteId, int attachment);
    void OpenLink(const QString& address);
    void GoToPane(int step);
    HelpWorld Help() const;
    void ShowOptions(OptionsTab tab, QWidget* over = nullptr);
    void ShowManual();
    void ShowAbout();
    void ShowCommandBar();
    void RunFound(const FindableItem& item, const std::vector<QAction*>& actions);

    CLorebinderApp& app_;
    Theme& theme_;
    ListBoardModel model_;
    NoteBookTrash trash_;
    MainToolBar* tools_ = nullptr;
    ControlBar* panels_ = nullptr;
    NoteActions* notes_ = nullptr;
    FaultBar* faults_ = nullptr;
    FaultRetry* retry_ = nullptr;
    BoardView* board_ = nullptr;
    QSplitter* split_ = nullptr;
    QAction* undo_ = nullptr;
    std::array<QLabel*, 5> panes_{};
    std::filesystem::path manual_;
    std::unique_ptr<UpdateSource> updateSource_;
    std::unique_ptr<UpdateCheck> updates_;
    int panelWidth_ = 0;    // as the settings had it last
    bool noNotes_ = false;  // what the empty board says
    bool syncs_ = false;    // the window closes for a sync that has been started
};

}  // namespace lore
