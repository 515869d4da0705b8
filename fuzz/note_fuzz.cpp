#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "trust/note_check.h"

/// The input is a note file of any version.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string finding = lore::CheckNoteFile(std::string(reinterpret_cast<const char*>(data), size));
    if (!finding.empty()) {
        std::fprintf(stderr, "%s\n", finding.c_str());
        std::abort();
    }
    return 0;
}
