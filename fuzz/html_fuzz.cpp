#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "rtf/rtf_check.h"

/// Any bytes as a web page.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string finding = lore::WhatIsWrongWithPage(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!finding.empty()) {
        std::fprintf(stderr, "%s\n", finding.c_str());
        std::abort();
    }
    return 0;
}
