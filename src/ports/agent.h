#pragma once

#include <string_view>

namespace lore {

/// What the agent program is told: to read its settings again, to read the reminders again, and to close.
inline constexpr char kAgentCheckSettings[] = "TQRAGENTCHECKSETTINGS";
inline constexpr char kAgentReloadReminders[] = "TQRAGENTRELOADREMINDERS";
inline constexpr char kAgentClose[] = "TQRAGENTCLOSE";

/// The agent: a program of its own that shows reminders while this one need not run.
class Agent {
public:
    virtual ~Agent() = default;
    /// Whether the program is there to be started.
    virtual bool IsInstalled() const = 0;
    virtual bool IsRunning() = 0;
    /// Starts it and doesn't wait. False if it could not be started.
    virtual bool Launch() = 0;
    /// Hands it a text; without a running agent the text is dropped.
    virtual void Send(std::string_view text) = 0;
    /// Whether it starts with the user's session. False if the system could not be told.
    virtual bool StartWithSession(bool starts) = 0;
};

}  // namespace lore
