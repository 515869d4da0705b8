#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "rtf/find.h"
#include "rtf/rtf.h"

namespace {

void Require(bool holds) {
    if (!holds)
        std::abort();
}

}  // namespace

/// Any bytes: both readers agree on the text, what is written reads as the same text, and marks change no text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view rtf(reinterpret_cast<const char*>(data), size);
    const std::string text = lore::PlainText(rtf);
    const lore::Document document = lore::ReadRtf(rtf);
    Require(document.text == text);
    const std::string written = lore::WriteRtf(document);
    Require(lore::PlainText(written) == text);
    Require(lore::ReadRtf(written).text == text);
    const lore::TextFinder finder("a", false);
    Require(lore::PlainText(lore::MarkRtf(rtf, finder.FindAll(text))) == text);
    return 0;
}
