#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "base/work_beside.h"
#include "platform/companion_launcher.h"
#include "platform/instance/local_channel.h"
#include "ports/process_launcher.h"

namespace lore {

/// The main program as the agent reaches it: by its channel while it runs, otherwise by starting it. Nothing here
/// waits: the program may ask the agent for the clipboard before it answers. Needs an event loop.
class ProgramLink {
public:
    /// @param places what a program that is started works with
    /// @param failed called if it could not be started
    ProgramLink(CompanionPlaces places, ProcessLauncher& companions, std::function<void()> failed);
    /// Waits for what is on its way.
    ~ProgramLink();

    /// Brings the program to the front, with what a reminder is about where one is given.
    void Open(const std::string& reminderId = {});
    /// The same, and it pastes the clipboard into a note.
    void Capture();
    /// Closes it with all its steps, if it runs.
    void Close();
    /// Tells it that the agent has changed an option, if it runs.
    void CheckAgentOptions();

private:
    void Hand(const std::string& request, const std::vector<std::string>& options);
    void Start(const std::vector<std::string>& options);
    void Command(const char* text);

    CompanionPlaces places_;
    LocalChannel channel_;
    ProcessLauncher& companions_;
    std::function<void()> failed_;
    QObject here_;       // of the thread that the rest runs on
    WorkBeside beside_;  // one request after the other
};

}  // namespace lore
