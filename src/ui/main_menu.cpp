#include "ui/main_menu.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>

namespace lore {

namespace {

constexpr std::pair<MainMenu, const char*> kMenus[] = {
    {MainMenu::File, "&File"},       {MainMenu::Options, "&Options"},       {MainMenu::Notes, "&Notes"},
    {MainMenu::Sources, "&Sources"}, {MainMenu::Categories, "&Categories"}, {MainMenu::View, "&View"},
    {MainMenu::Sync, "S&ync"},       {MainMenu::Tools, "&Tools"},           {MainMenu::Help, "&Help"}};

void AddCommand(QMenu& menu, QObject* owner, const MenuCommand& command) {
    if (command.make)
        return command.make(menu);
    if (command.text.isEmpty()) {
        menu.addSeparator();
        return;
    }
    QAction* const action = menu.addAction(command.text);
    action->setShortcuts(command.keys);
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

}  // namespace lore
