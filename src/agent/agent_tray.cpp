#include "agent/agent_tray.h"

#include <QAction>
#include <QMenu>

#include "ui/look/qt_text.h"

namespace lore {

AgentTray::AgentTray(TrayCommands commands)
    : commands_(std::move(commands)),
      menu_(std::make_unique<QMenu>()),
      icon_(QIcon::fromTheme("lorebinder", QIcon(":/icons/lorebinder.svg"))) {
    Add(tr("&Open Lorebinder"), "openProgram", commands_.openProgram);
    Add(tr("&Capture Selected Text"), "capture", commands_.capture);
    Add(tr("&Reminders..."), "reminders", commands_.showReminders);
    menu_->addSeparator();
    runAgent_ = AddSwitch(tr("Run Only When &Lorebinder Runs"), "runAgent", commands_.setRunAgent);
    startupAgent_ = AddSwitch(tr("Run at the &Start of the Session"), "startupAgent", commands_.setStartupAgent);
    menu_->addSeparator();
    Add(tr("Close Lore&binder"), "closeProgram", commands_.closeProgram);
    Add(tr("&Quit Agent"), "quit", commands_.quit);
    icon_.setContextMenu(menu_.get());
    connect(&icon_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            commands_.showReminders();
    });
    SetWaiting(0);
}

AgentTray::~AgentTray() = default;

QAction* AgentTray::Add(const QString& text, const char* name, const std::function<void()>& run) {
    QAction* const action = menu_->addAction(text, this, run);
    action->setObjectName(name);
    return action;
}

QAction* AgentTray::AddSwitch(const QString& text, const char* name, const std::function<void(bool)>& set) {
    QAction* const action = menu_->addAction(text);
    action->setObjectName(name);
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, set);
    return action;
}

void AgentTray::SetOptions(bool runAgent, bool startupAgent) {
    runAgent_->setChecked(runAgent);
    startupAgent_->setChecked(startupAgent);
}

void AgentTray::SetWanted(bool wanted) {
    const bool shown = wanted && QSystemTrayIcon::isSystemTrayAvailable();
    if (shown != icon_.isVisible())
        icon_.setVisible(shown);
}

void AgentTray::SetWaiting(int count) {
    icon_.setToolTip(count == 0 ? tr("Lorebinder Agent")
                                : WithPlural(tr("Lorebinder Agent: %n reminder(s)", nullptr, count), count));
}

void AgentTray::Tell(const QString& text) {
    if (icon_.isVisible())
        icon_.showMessage(tr("Lorebinder Agent"), text, QSystemTrayIcon::Warning);
}

}  // namespace lore
