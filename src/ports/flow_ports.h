#pragma once

#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"

namespace lore {

/// How a flow asks, shows that it goes on, and tells what fails. All of it outlives the flow.
struct FlowPorts {
    Prompts& prompts;
    Progress& progress;
    FaultNotice& faults;

    /// The same with another listener to faults.
    FlowPorts Telling(FaultNotice& listener) const {
        return {.prompts = prompts, .progress = progress, .faults = listener};
    }
};

}  // namespace lore
