#include "rtf/rtf_check.h"
#include "stop_at.h"

/// Any bytes as a web page.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lore::StopAt(lore::WhatIsWrongWithPage(lore::InputText(data, size)));
    return 0;
}
