#pragma once

#include <string>
#include <vector>

#include "platform/companion_launcher.h"
#include "platform/instance/local_channel.h"
#include "ports/process_launcher.h"

namespace lore {

/// The main program as the agent reaches it: by its channel while it runs, otherwise by starting it.
class ProgramLink {
public:
    /// `places`: what a program that is started works with.
    ProgramLink(CompanionPlaces places, ProcessLauncher& companions);

    bool IsRunning() { return channel_.FindInstance(); }
    /// Brings the program to the front, with what a reminder is about where one is given. False if it could not be
    /// started.
    bool Open(const std::string& reminderId = {});
    /// The same, and it pastes the clipboard into a note.
    bool Capture();
    /// Closes it with all its steps.
    void Close();
    /// Tells it that the agent has changed an option.
    void CheckAgentOptions();

private:
    bool Hand(const std::string& request, const std::vector<std::string>& options);

    CompanionPlaces places_;
    LocalChannel channel_;
    ProcessLauncher& companions_;
};

}  // namespace lore
