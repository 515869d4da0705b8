#pragma once

#include <QSystemTrayIcon>
#include <functional>
#include <memory>

class QAction;
class QMenu;

namespace lore {

/// What the icon's menu does. None may be empty.
struct TrayCommands {
    std::function<void()> openProgram;
    std::function<void()> capture;
    std::function<void()> showReminders;
    std::function<void()> closeProgram;
    std::function<void()> quit;
    std::function<void(bool)> setRunAgent, setStartupAgent;
};

/// The agent's icon in the bar of the desktop, where there is one and the user wants it. A click brings up the popups,
/// the menu does the rest.
class AgentTray : public QObject {
    Q_OBJECT

public:
    explicit AgentTray(TrayCommands commands);
    ~AgentTray() override;

    /// How the two options stand.
    void SetOptions(bool runAgent, bool startupAgent);
    /// A bar that comes up after the agent gets the icon at the next call.
    void SetWanted(bool wanted);
    /// How many popups are on the screen.
    void SetWaiting(int count);
    void Tell(const QString& text);
    bool IsShown() const { return icon_.isVisible(); }
    QMenu& Menu() { return *menu_; }

private:
    QAction* Add(const QString& text, const char* name, const std::function<void()>& run);
    QAction* AddSwitch(const QString& text, const char* name, const std::function<void(bool)>& set);

    TrayCommands commands_;
    std::unique_ptr<QMenu> menu_;
    QSystemTrayIcon icon_;
    QAction *runAgent_ = nullptr, *startupAgent_ = nullptr;
};

}  // namespace lore
