#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include "agent/agent_tray.h"
#include "agent/popup_window.h"
#include "agent/program_link.h"
#include "calendar/popup_agent.h"
#include "platform/hotkey/x11_hot_key.h"
#include "ports/agent.h"
#include "settings/settings.h"

namespace lore {

class Theme;

/// What the agent works with. All of it outlives the agent.
struct AgentParts {
    CompanionPlaces places;
    Clock& clock;
    FaultNotice& faults;
    ProcessLauncher& companions;
    Agent& self;  ///< knows how the agent starts with the session
    Theme& theme;
};

/// The resident program: the popups with their window, the icon, the hot key, and the messages of the main program.
class AgentProgram : public QObject {
    Q_OBJECT

public:
    explicit AgentProgram(const AgentParts& parts);

    /// Reads the options and the files and shows what is due; from here on it looks after itself.
    void Start();
    uint32_t Receive(const InstanceMessage& message) { return agent_.Receive(message); }
    /// Copies what is selected in any program and hands it to the main program for a note.
    void Capture();

    PopupWindow& Window() { return window_; }
    // For tests alone.
    AgentTray& Tray() { return tray_; }
    PopupAgent& Popups() { return agent_; }

signals:
    void Closed();

private:
    AgentHooks Hooks();
    TrayCommands Commands();
    void CheckSettings();
    void SetOption(Option option, bool on);
    void Look();
    void WaitForNext();
    void ShowWaiting();

    AgentParts parts_;
    ProgramLink program_;
    PopupAgent agent_;
    PopupWindow window_;
    AgentTray tray_;
    X11HotKey hotKey_;
    Settings settings_;
    HotKey taken_;
    QFileSystemWatcher watcher_;
    QTimer look_;
};

}  // namespace lore
