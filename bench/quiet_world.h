#pragma once

#include <string>

#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

class NoFaults : public FaultNotice {
public:
    void Tell(const Fault&) override {}
};

class FixedGuids : public GuidSource {
public:
    std::string NewGuid() override { return "{G}"; }
};

/// What loading and searching need of the world, without a report of faults.
struct QuietWorld {
    NoFaults faults;
    FixedGuids guids;
    ReadContext context{DateTime(2026, 1, 1), DateTime(2026, 1, 1), &guids};
};

}  // namespace lore
