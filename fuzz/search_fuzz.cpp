#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "notes/search_check.h"
#include "support/read_world.h"

/// The first line is what was typed, the others are notes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const lore::TempFolder folder(lore::MemoryFolder());
    const std::string finding =
        lore::CheckSearch(std::string_view(reinterpret_cast<const char*>(data), size), folder.Path());
    if (!finding.empty()) {
        std::fprintf(stderr, "%s\n", finding.c_str());
        std::abort();
    }
    return 0;
}
