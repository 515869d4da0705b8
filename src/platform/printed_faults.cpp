#include "platform/printed_faults.h"

#include <cstdio>

#include "base/text.h"

namespace lore {

void PrintedFaults::Tell(const Fault& fault) {
    any_ = true;
    std::fprintf(stderr, "%s: %s: %s: %s\n", program_.c_str(), ToUtf8(fault.what).c_str(), fault.path.c_str(),
                 fault.reason.c_str());
}

}  // namespace lore
