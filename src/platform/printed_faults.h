#pragma once

#include <string>

#include "ports/fault_notice.h"

namespace lore {

/// Prints faults to standard error, behind the name of the program, and remembers that there was one.
class PrintedFaults : public FaultNotice {
public:
    explicit PrintedFaults(std::string program) : program_(std::move(program)) {}
    void Tell(const Fault& fault) override;
    bool Any() const { return any_; }

private:
    std::string program_;
    bool any_ = false;
};

}  // namespace lore
