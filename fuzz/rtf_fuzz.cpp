#include "fuzz_target.h"
#include "rtf/rtf_check.h"

/// Any bytes as rich text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view rtf = lore::InputText(data, size);
    lore::StopAt(lore::GetsSlowChecks(rtf) ? lore::WhatIsWrongWith(rtf) : lore::WhatIsWrongWithReading(rtf));
    return 0;
}
