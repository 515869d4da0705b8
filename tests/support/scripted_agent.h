#pragma once

#include <string>
#include <vector>

#include "ports/agent.h"

namespace lore {

/// An agent that notes what it is told.
class ScriptedAgent : public Agent {
public:
    bool IsInstalled() const override { return installed; }
    bool IsRunning() override { return running; }
    bool Launch() override {
        ++launches;
        return running = installed;
    }
    void Send(std::string_view text) override { told.emplace_back(text); }
    bool StartWithSession(bool starts) override {
        startsWithSession = starts;
        return true;
    }

    bool installed = true, running = false, startsWithSession = false;
    int launches = 0;
    std::vector<std::string> told;
};

}  // namespace lore
