#include "ui/main/main_menu.h"

#include <QAction>
#include <QCoreApplication>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <utility>

#include "ui/controls/run_when_free.h"

namespace lore {

namespace {

constexpr std::pair<MainMenu, const char*> kMenus[] = {
    {MainMenu::File, "&File"},       {MainMenu::Options, "&Options"},       {MainMenu::Notes, "&Notes"},
    {MainMenu::Sources, "&Sources"}, {MainMenu::Categories, "&Categories"}, {MainMenu::View, "&View"},
    {MainMenu::Sync, "S&ync"},       {MainMenu::Tools, "&Tools"},           {MainMenu::Help, "&Help"}};

/// `made`: the entries so far, by their texts. Of two actions with the same keys neither would run.
void AddCommand(QMenu& menu, QObject* owner, const MenuCommand& command, QHash<QString, QAction*>& made) {
    if (command.make)
        return command.make(menu);
    if (command.text.isEmpty()) {
        menu.addSeparator();
        return;
    }
    if (!command.run)
        return menu.addAction(made.value(command.text));
    QAction* const action = menu.addAction(command.text);
    made.insert(command.text, action);
    action->setShortcuts(command.keys);
    QObject::connect(action, &QAction::triggered, owner, WhereFree(command.run));
}

}  // namespace

void BuildMenuBar(QMenuBar& bar, QObject* owner, const std::vector<MenuCommand>& commands) {
    QHash<QString, QAction*> made;
    for (const auto& [menu, title] : kMenus) {
        QMenu* shown = nullptr;
        for (const MenuCommand& command : commands) {
            if (command.menu != menu)
                continue;
            if (!shown)
                shown = bar.addMenu(QCoreApplication::translate("MainMenu", title));
            AddCommand(*shown, owner, command, made);
        }
    }
}

}  // namespace lore
