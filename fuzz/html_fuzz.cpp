#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "rtf/html_reader.h"
#include "rtf/rtf.h"

/// Any bytes: what a page is read as, written and read again, is the same text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const lore::Document document =
        lore::ReadHtml({reinterpret_cast<const char*>(data), size}, {"Times New Roman", 27});
    if (lore::PlainText(lore::WriteRtf(document)) != document.text)
        std::abort();
    return 0;
}
