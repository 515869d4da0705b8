#pragma once

#include <string_view>

namespace lore {

/// What the program tells the reminder agent.
inline constexpr char kAgentReloadReminders[] = "TQRAGENTRELOADREMINDERS";

/// The way to the reminder agent. Without a running agent a command is dropped.
class AgentLink {
public:
    virtual ~AgentLink() = default;
    virtual void Send(std::string_view command) = 0;
};

/// For whoever has no agent. It reads the reminders again when their file changes.
class NoAgentLink : public AgentLink {
public:
    void Send(std::string_view) override {}
};

}  // namespace lore
