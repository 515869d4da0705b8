#include "platform/printed_faults.h"

#include <cstdio>

namespace lore {

void PrintedFaults::Tell(const Fault& fault) {
    any_ = true;
    std::fprintf(stderr, "%s: %s: %s: %s\n", program_.c_str(), show_(fault.what).c_str(), show_(fault.path).c_str(),
                 show_(fault.reason).c_str());
}

}  // namespace lore
