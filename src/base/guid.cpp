#include "base/guid.h"

#include <cstdio>

namespace lore {

std::string FormatGuid(const std::array<uint8_t, 16>& b) {
    char text[39];
    std::snprintf(text, sizeof text, "{%02X%02X%02X%02X-%02X%02X-%02x%02x-%02X%02X-%02X%02X%02X%02X%02X%02X}", b[0],
                  b[1], b[2], b[3], b[4], b[5], b[6], b[7], b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
    return text;
}

}  // namespace lore
