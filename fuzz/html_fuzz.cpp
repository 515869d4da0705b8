#include "fuzz_target.h"
#include "rtf/rtf_check.h"

/// Any bytes as a web page.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view html = lore::InputText(data, size);
    lore::StopAt(lore::GetsSlowChecks(html) ? lore::WhatIsWrongWithPage(html) : lore::WhatIsWrongWithReadingPage(html));
    return 0;
}
