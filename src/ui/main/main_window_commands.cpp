#include <QMenu>

#include "app/exchange_commands.h"
#include "app/notebook_commands.h"
#include "app/print_commands.h"
#include "bibliography/source_selection.h"
#include "ui/bibliography/select_sources_dlg.h"
#include "ui/calendar/task_manager_dialog.h"
#include "ui/main/command_bar_actions.h"
#include "ui/main/fault_retry.h"
#include "ui/main/help_actions.h"
#include "ui/main/list_actions.h"
#include "ui/main/main_window.h"
#include "ui/main/note_menu.h"
#include "ui/main/notebook_actions.h"
#include "ui/main/online_actions.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"
#include "ui/options/options_prop_sheet.h"

namespace lore {

/// The commands of the menu bar, in its order.
std::vector<MenuCommand> MainWindow::Commands() {
    using Menu = MainMenu;
    using Key = QKeySequence;
    const MenuCommand line = {Menu::File, {}};
    const QString options = tr("Lorebinder &Options..."), sourceTypes = tr("&Edit Custom Source Types...");
    const QString bibliography = tr("Create &Bibliography...");
    return {
        {Menu::File,
         tr("&Save/Print Current Notes..."),
         {Key::Print, Key::Save},
         [this] { retry_->Run([this] { return PrintCurrentNotes(app_); }); }},
        {Menu::File, tr("&Export Current Notes..."), {Key("Ctrl+Shift+X")}, [this] { ExportCurrentNotes(app_); }},
        {Menu::File, tr("&Import Notes..."), {Key::Open}, [this] { noteBooks_->Import(); }},
        {Menu::File, tr("&Backup Current NoteBook..."), {Key("Ctrl+B")}, [this] { BackupCurrentNoteBook(app_); }},
        {Menu::File, tr("Backup &All NoteBooks..."), {Key("Ctrl+Alt+B")}, [this] { BackupAllNoteBooks(app_); }},
        {Menu::File, tr("&Run Auto-Backup..."), {Key("Ctrl+Shift+R")}, [this] { RunAutoBackup(app_); }},
        line,
        {Menu::File, tr("E&xit"), {Key("Ctrl+Q")}, [this] { close(); }},

        {Menu::Options, options, {Key("Ctrl+,")}, [this] { ShowOptions(OptionsTab::General); }},

        {Menu::Notes, tr("Add &Note..."), {Key::New}, [this] { notes_->AddNote(); }},
        {Menu::Notes, {}, {}, {}, [this](QMenu& menu) { noteMenu_->Fill(menu); }},
        {Menu::Notes, {}},
        {Menu::Notes, tr("&Search..."), {Key::Find}, [this] { tools_->FocusSearch(); }},
        {Menu::Notes,
         {},
         {},
         {},
         [this](QMenu& menu) { menu.addMenu(tools_->ScopeMenu())->setText(tr("Search &Options")); }},
        {Menu::Notes, {}},
        {Menu::Notes, tr("Show &All Notes"), {Key("Ctrl+Shift+A")}, [this] { lists_->ShowAllNotes(); }},
        {Menu::Notes, tr("&Clear Current Notes"), {Key("Ctrl+Shift+L")}, [this] { lists_->Clear(); }},
        {Menu::Notes, tr("Delete Current No&tes"), {Key("Ctrl+Shift+Del")}, [this] { notes_->DeleteCurrentNotes(); }},

        {Menu::Sources, tr("&View Sources..."), {Key("Ctrl+Shift+S")}, [this] { notes_->ViewSources(); }},
        {Menu::Sources, sourceTypes, {Key("Ctrl+Shift+C")}, [this] { notes_->EditSourceTypes(); }},
        {Menu::Sources, bibliography, {Key("Ctrl+Shift+B")}, [this] { AskForBibliography(); }},

        {Menu::Categories,
         tr("&Edit Category Trees..."),
         {Key("Ctrl+Shift+T")},
         [this] { lists_->EditCategoryTrees(); }},

        {Menu::View, {}, {}, {}, [this](QMenu& menu) { FillViewMenu(menu); }},
        {Menu::View, tr("&Command Bar..."), {Key("Ctrl+K")}, [this] { commandBar_->Show(); }},

        {Menu::Tools, options},
        {Menu::Tools, sourceTypes},
        {Menu::Tools, bibliography},
        {Menu::Tools, tr("&Manage NoteBooks..."), {Key("Ctrl+Shift+N")}, [this] { noteBooks_->Manage(); }},
        {Menu::Tools, tr("E&vent Calendar..."), {kCalendarKeys}, [this] { ShowCalendar(); }},
        {Menu::Tools, tr("Lorebinder &Agent..."), {Key("Ctrl+Shift+G")}, [this] { ShowOptions(OptionsTab::Agent); }},
        {Menu::Tools,
         tr("Lorebinder Auto-Bac&kup..."),
         {Key("Ctrl+Shift+K")},
         [this] { ShowOptions(OptionsTab::AutoBackup); }},

        {Menu::Sync, tr("&Run Sync"), {kSyncKeys}, [this] { online_->RunSync(); }},
        {Menu::Sync, tr("&Link Current NoteBook..."), {Key("Ctrl+Shift+I")}, [this] { online_->LinkNoteBook(); }},
        {Menu::Sync, tr("Online Sync &Setup..."), {Key("Ctrl+Shift+O")}, [this] { online_->SetUpSync(); }},

        {Menu::Help, tr("&About Lorebinder..."), {Key("Ctrl+F1")}, [this] { help_->ShowAbout(); }},
        {Menu::Help,
         tr("&Check for program updates...."),
         {Key("Ctrl+Shift+F1")},
         [this] { help_->CheckForUpdates(false); }},
        {Menu::Help, tr("&User's Manual (.pdf)..."), {Key::HelpContents}, [this] { help_->ShowManual(); }},
        {Menu::Help, tr("View Online &Tutorial Videos..."), {Key("Shift+F1")}, [this] { help_->ShowTutorial(); }},
    };
}

void MainWindow::ShowCalendar() {
    TaskManagerDialog(app_, theme_, this).exec();
}

void MainWindow::ShowOptions(OptionsTab tab, QWidget* over) {
    const OptionsWorld world{app_.GetSettings(), app_.Store(), app_.Ports().prompts,
                             [this] { board_->SetOptions(BoardOptionsOf(app_.GetSettings(), app_.Store())); },
                             [this] { return app_.FlushStore(); }};
    const OptionsParts parts{theme_, notes_->Commands().Spelling(), app_.Ports().agent,
                             DialogChoosers(theme_, app_.Store())};
    COptionsPropSheet(world, parts, tab, over ? over : this).exec();
}

void MainWindow::AskForBibliography() {
    SourceSelection selection(app_.NoteBook().sources, app_.NoteBook().authors);
    CSelectSourcesDlg dialog(selection, theme_, app_.Store(), this);
    if (dialog.exec() == kSourcesSelected)
        retry_->Run([this, chosen = selection.Selected()] { return CreateBibliography(app_, chosen); });
}

}  // namespace lore
