#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/process_launcher.h"

namespace lore {

/// Starts nothing and notes what was to be started: the program and its first argument.
class NotedSyncs : public ProcessLauncher {
public:
    std::optional<std::string> StartCompanion(const std::string& name,
                                              const std::vector<std::string>& arguments) override {
        started.push_back(name + " " + arguments.at(0));
        return failure;
    }
    std::vector<std::string> started;
    std::optional<std::string> failure;
};

}  // namespace lore
