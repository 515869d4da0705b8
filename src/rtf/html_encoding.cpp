#include "rtf/html_encoding.h"

#include <algorithm>
#include <optional>
#include <unicode/ucnv.h>
#include <utility>

#include "base/text.h"
#include "rtf/encoding.h"

namespace lore {

namespace {

/// The name of the encoding that the page gives itself; empty for none.
std::string NamedEncoding(std::string_view bytes) {
    constexpr size_t kHead = 1024;
    constexpr std::string_view kElements[][2] = {{"<meta", "charset="}, {"<?xml", "encoding="}};
    const std::string head = ToLower(bytes.substr(0, kHead));
    for (const auto& [begin, key] : kElements) {
        for (size_t at = head.find(begin); at != std::string::npos; at = head.find(begin, at + 1)) {
            const std::string_view element = std::string_view(head).substr(at, head.find('>', at) - at);
            const size_t found = element.find(key);
            if (found == std::string_view::npos)
                continue;
            std::string_view name = element.substr(found + key.size());
            name.remove_prefix(std::min(name.find_first_not_of(" \t\r\n\f\"'"), name.size()));
            return std::string(name.substr(0, name.find_first_of(" \t\r\n\f\"';/?")));
        }
    }
    return {};
}

/// The name that mail and pages have for an encoding; empty for none.
std::string_view StandardName(const std::string& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    const char* const name = ucnv_getStandardName(encoding.c_str(), "MIME", &status);
    return name == nullptr ? std::string_view() : name;
}

/// Whether the bytes may be of an encoding that writes all letters as ASCII between marks: they would pass for UTF-8.
bool IsSevenBit(std::string_view bytes, const std::string& encoding) {
    const std::string_view name = StandardName(encoding);
    return (name.starts_with("ISO-2022-") || name.starts_with("HZ-")) &&
           std::none_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Pages that name a set hold what stands in the larger one of Windows.
std::string AsWrittenOnWindows(const std::string& encoding) {
    constexpr std::pair<std::string_view, const char*> kLarger[] = {{"US-ASCII", "windows-1252"},
                                                                    {"ISO-8859-1", "windows-1252"},
                                                                    {"ISO-8859-9", "windows-1254"},
                                                                    {"GB2312", "GBK"},
                                                                    {"EUC-KR", "windows-949"}};
    const std::string_view standard = StandardName(encoding);
    for (const auto& [name, larger] : kLarger) {
        if (name == standard)
            return larger;
    }
    return encoding;
}

}  // namespace

std::string DecodedPage(std::string_view bytes) {
    std::string encoding = NamedEncoding(bytes);
    if (encoding.empty() || (IsValidUtf8(bytes) && !IsSevenBit(bytes, encoding)))
        return ToUtf8(bytes);
    encoding = AsWrittenOnWindows(encoding);
    // A name that could be read is wrong if it stands for an encoding in which it couldn't.
    constexpr std::string_view kAscii = "<+>";
    std::optional<std::string> page;
    if (DecodedFrom(encoding, kAscii) == kAscii)
        page = DecodedFrom(encoding, bytes);
    return page ? std::move(*page) : ToUtf8(bytes);
}

}  // namespace lore
