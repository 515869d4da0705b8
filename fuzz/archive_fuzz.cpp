#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "exchange/archive_check.h"
#include "support/read_world.h"

/// The input is an archive that is to be imported.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const lore::TempFolder folder(lore::MemoryFolder());
    const std::string finding =
        lore::CheckArchive(std::string(reinterpret_cast<const char*>(data), size), folder.Path());
    if (!finding.empty()) {
        std::fprintf(stderr, "%s\n", finding.c_str());
        std::abort();
    }
    return 0;
}
