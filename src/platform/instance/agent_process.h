#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/instance/local_channel.h"
#include "ports/agent.h"
#include "ports/process_launcher.h"

namespace lore {

/// The file name of the agent's program.
inline constexpr char kAgentProgram[] = "LBAgent";

/// The agent as a program beside this one, reached by its channel.
class AgentProcess : public Agent {
public:
    /// `program` need not be there. `autostart` is the file that makes the desktop start it with the session, with
    /// `options` on its command line.
    AgentProcess(std::filesystem::path program, std::filesystem::path autostart, const std::filesystem::path& dataRoot,
                 ProcessLauncher& companions, std::vector<std::string> options = {});

    bool IsInstalled() const override;
    bool IsRunning() override { return channel_.FindInstance(); }
    bool Launch() override { return !companions_.StartCompanion(kAgentProgram, {"Lorebinder"}); }
    void Send(std::string_view text) override { channel_.SendCommand(text); }
    /// Writes or removes the user's entry for the desktop; where the system has one of the same name, the user's is
    /// hidden instead, so that it stays off. Nothing is written for a program that has gone.
    bool StartWithSession(bool starts) override;

private:
    std::filesystem::path program_, autostart_;
    std::vector<std::string> options_;
    LocalChannel channel_;
    ProcessLauncher& companions_;
};

}  // namespace lore
