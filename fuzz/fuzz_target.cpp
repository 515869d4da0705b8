#include "fuzz_target.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

/// Inputs are small: little of what was freed, and few callers, tell enough of a fault, and a target keeps to some 70
/// MB instead of 500.
extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier): the sanitizer's own name
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=4:malloc_context_size=6";
}

namespace lore {

bool GetsSlowChecks(std::string_view input) {
    return std::hash<std::string_view>{}(input) % LORE_FUZZ_SLOW_ONE_OF == 0;
}

void StopAt(const std::string& finding) {
    if (finding.empty())
        return;
    std::fprintf(stderr, "%s\n", finding.c_str());
    std::abort();
}

}  // namespace lore
