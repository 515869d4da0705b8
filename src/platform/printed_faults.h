#pragma once

#include <string>
#include <string_view>

#include "base/text.h"
#include "ports/fault_notice.h"

namespace lore {

/// Prints faults to standard error, after the name of the program, and remembers that there was one. `show` makes each
/// text of a fault one to print.
class PrintedFaults : public FaultNotice {
public:
    explicit PrintedFaults(std::string program, std::string (*show)(std::string_view) = ToUtf8)
        : program_(std::move(program)), show_(show) {}
    void Tell(const Fault& fault) override;
    void Mended(const std::string& /*what*/, const std::string& /*path*/) override {}  // printed is printed
    bool Any() const { return any_; }

private:
    std::string program_;
    std::string (*show_)(std::string_view);
    bool any_ = false;
};

}  // namespace lore
