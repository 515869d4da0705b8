#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/process_launcher.h"

namespace lore {

/// Starts nothing and notes what was to be started: "program|argument|argument".
class NotedStarts : public ProcessLauncher {
public:
    std::optional<std::string> StartCompanion(const std::string& name,
                                              const std::vector<std::string>& arguments) override {
        started.push_back(name);
        for (const std::string& argument : arguments)
            started.back() += "|" + argument;
        return failure;
    }
    std::vector<std::string> started;
    std::optional<std::string> failure;
};

}  // namespace lore
