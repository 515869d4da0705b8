#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace lore {

/// Sixteen bytes as "{XXXXXXXX-XXXX-xxxx-XXXX-XXXXXXXXXXXX}": 38 characters, the third group in lower case.
std::string FormatGuid(const std::array<uint8_t, 16>& bytes);

}  // namespace lore
