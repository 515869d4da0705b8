#include "ui/main_menu.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>

#include "app/notebook_commands.h"
#include "ui/main_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/tool_bar.h"

namespace lore {

namespace {

constexpr std::pair<MainMenu, const char*> kMenus[] = {{MainMenu::File, "&File"},
                                                       {MainMenu::Options, "&Options"},
                                                       {MainMenu::Notes, "&Notes"},
                                                       {MainMenu::Sources, "&Sources"},
                                                       {MainMenu::Categories, "&Categories"},
                                                       {MainMenu::View, "&View"},
                                                       {MainMenu::Tools, "&Tools"},
                                                       {MainMenu::Help, "&Help"}};

void AddCommand(QMenu& menu, QObject* owner, const MenuCommand& command) {
    if (command.make)
        return command.make(menu);
    if (command.text.isEmpty()) {
        menu.addSeparator();
        return;
    }
    QAction* const action = menu.addAction(command.text);
    action->setShortcut(command.keys);
    QObject::connect(action, &QAction::triggered, owner, command.run);
}

}  // namespace

void BuildMenuBar(QMenuBar& bar, QObject* owner, const std::vector<MenuCommand>& commands) {
    for (const auto& [menu, title] : kMenus) {
        QMenu* shown = nullptr;
        for (const MenuCommand& command : commands) {
            if (command.menu != menu)
                continue;
            if (!shown)
                shown = bar.addMenu(QCoreApplication::translate("MainMenu", title));
            AddCommand(*shown, owner, command);
        }
    }
}

/// The commands of the menu bar. A command that doesn't exist yet has no line.
std::vector<MenuCommand> MainWindow::Commands() {
    using Menu = MainMenu;
    const MenuCommand line = {Menu::File, {}};
    const QKeySequence showAll(Qt::CTRL | Qt::SHIFT | Qt::Key_A), clear(Qt::CTRL | Qt::SHIFT | Qt::Key_L);
    return {
        {Menu::File, tr("&Backup Current NoteBook..."), {}, [this] { BackupCurrentNoteBook(app_); }},
        {Menu::File, tr("Backup &All NoteBooks..."), {}, [this] { BackupAllNoteBooks(app_); }},
        {Menu::File, tr("&Run Auto-Backup..."), {}, [this] { RunAutoBackup(app_); }},
        line,
        {Menu::File, tr("E&xit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] { close(); }},

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
        {Menu::Notes, tr("&Clear Current Notes"), {clear}, [this] { ClearCurrentNotes(); }},
        {Menu::Notes, tr("Delete C&urrent Notes"), {}, [this] { notes_->DeleteCurrentNotes(); }},

        {Menu::View, {}, {}, {}, [this](QMenu& menu) { FillViewMenu(menu); }},

        {Menu::Tools,
         tr("&Manage NoteBooks..."),
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N)},
         [this] { ManageNoteBooks(); }},

        {Menu::Help, tr("&About Lorebinder..."), {}, [this] { ShowAbout(); }},
    };
}

}  // namespace lore
