#include "rtf/rtf_check.h"
#include "stop_at.h"

/// Any bytes as rich text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lore::StopAt(lore::WhatIsWrongWith(lore::InputText(data, size)));
    return 0;
}
