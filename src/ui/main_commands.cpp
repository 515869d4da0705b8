#include <QMenu>

#include "app/exchange_commands.h"
#include "app/help_commands.h"
#include "app/notebook_commands.h"
#include "app/print_commands.h"
#include "ui/fault_retry.h"
#include "ui/main_menu.h"
#include "ui/main_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/options/options_prop_sheet.h"
#include "ui/tool_bar.h"

namespace lore {

/// The commands of the menu bar, in its order.
std::vector<MenuCommand> MainWindow::Commands() {
    using Menu = MainMenu;
    const MenuCommand line = {Menu::File, {}};
    const QKeySequence showAll(Qt::CTRL | Qt::SHIFT | Qt::Key_A), clear(Qt::CTRL | Qt::SHIFT | Qt::Key_L);
    const QKeySequence viewSources(Qt::CTRL | Qt::SHIFT | Qt::Key_S), bibliography(Qt::CTRL | Qt::SHIFT | Qt::Key_B);
    const QKeySequence preferences(Qt::CTRL | Qt::Key_Comma), manage(Qt::CTRL | Qt::SHIFT | Qt::Key_N);
    const QKeySequence editTrees(Qt::CTRL | Qt::SHIFT | Qt::Key_T);
    const QKeySequence calendar(Qt::CTRL | Qt::SHIFT | Qt::Key_E), runSync(Qt::CTRL | Qt::SHIFT | Qt::Key_Y);
    return {
        {Menu::File,
         tr("&Save/Print Current Notes..."),
         {QKeySequence::Print, QKeySequence::Save},
         [this] { retry_->Run([this] { return PrintCurrentNotes(app_); }); }},
        {Menu::File, tr("&Export Current Notes..."), {}, [this] { ExportCurrentNotes(app_); }},
        {Menu::File, tr("&Import Notes..."), {QKeySequence::Open}, [this] { ImportNotes(); }},
        {Menu::File, tr("&Backup Current NoteBook..."), {}, [this] { BackupCurrentNoteBook(app_); }},
        {Menu::File, tr("Backup &All NoteBooks..."), {}, [this] { BackupAllNoteBooks(app_); }},
        {Menu::File, tr("&Run Auto-Backup..."), {}, [this] { RunAutoBackup(app_); }},
        line,
        {Menu::File, tr("E&xit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] { close(); }},

        {Menu::Options, tr("Lorebinder &Options..."), {preferences}, [this] { ShowOptions(OptionsTab::General); }},

        {Menu::Notes, tr("Add &Note..."), {QKeySequence::New}, [this] { notes_->AddNote(); }},
        {Menu::Notes, {}, {}, {}, [this](QMenu& menu) { FillNoteMenu(menu); }},
        {Menu::Notes, {}},
        {Menu::Notes, tr("&Search..."), {QKeySequence::Find}, [this] { tools_->FocusSearch(); }},
        {Menu::Notes,
         {},
         {},
         {},
         [this](QMenu& menu) { menu.addMenu(tools_->ScopeMenu())->setText(tr("Search &Options")); }},
        {Menu::Notes, {}},
        {Menu::Notes, tr("Show &All Notes"), {showAll}, [this] { ShowAllNotes(); }},
        {Menu::Notes,
         tr("&Clear Current Notes"),
         {clear},
         [this] {
             app_.ClearList();
             ListChanged();
         }},
        {Menu::Notes, tr("Delete Current No&tes"), {}, [this] { notes_->DeleteCurrentNotes(); }},

        {Menu::Sources, tr("&View Sources..."), {viewSources}, [this] { notes_->ViewSources(); }},
        {Menu::Sources, tr("&Edit Custom Source Types..."), {}, [this] { notes_->EditSourceTypes(); }},
        {Menu::Sources, tr("Create &Bibliography..."), {bibliography}, [this] { AskForBibliography(); }},

        {Menu::Categories, tr("&Edit Category Trees..."), {editTrees}, [this] { EditCategoryTrees(); }},

        {Menu::View, {}, {}, {}, [this](QMenu& menu) { FillViewMenu(menu); }},
        {Menu::View, tr("&Command Bar..."), {QKeySequence(Qt::CTRL | Qt::Key_K)}, [this] { ShowCommandBar(); }},

        {Menu::Tools, tr("Lorebinder &Options..."), {}, [this] { ShowOptions(OptionsTab::General); }},
        {Menu::Tools, tr("Edit Custom Source T&ypes..."), {}, [this] { notes_->EditSourceTypes(); }},
        {Menu::Tools, tr("Create Bib&liography..."), {}, [this] { AskForBibliography(); }},
        {Menu::Tools, tr("&Manage NoteBooks..."), {manage}, [this] { ManageNoteBooks(); }},
        {Menu::Tools, tr("E&vent Calendar..."), {calendar}, [this] { ShowCalendar(); }},
        {Menu::Tools, tr("Lorebinder &Agent..."), {}, [this] { ShowOptions(OptionsTab::Agent); }},
        {Menu::Tools, tr("Lorebinder Auto-&Backup..."), {}, [this] { ShowOptions(OptionsTab::AutoBackup); }},

        {Menu::Sync, tr("&Run Sync"), {runSync}, [this] { RunSync(); }},
        {Menu::Sync, tr("&Link Current NoteBook..."), {}, [this] { LinkNoteBook(); }},
        {Menu::Sync, tr("Online Sync &Setup..."), {}, [this] { SetUpSync(); }},

        {Menu::Help, tr("&About Lorebinder..."), {}, [this] { ShowAbout(); }},
        {Menu::Help, tr("&Check for program updates...."), {}, [this] { CheckForUpdates(false); }},
        {Menu::Help, tr("&User's Manual (.pdf)..."), {QKeySequence::HelpContents}, [this] { ShowManual(); }},
        {Menu::Help, tr("View Online &Tutorial Videos..."), {}, [this] { OpenTutorial(Help()); }},
    };
}

}  // namespace lore
