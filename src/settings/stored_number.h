#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

namespace lore {

/// The number that a stored text stands for, "true" and "false" for 1 and 0. Nothing for any other text.
inline std::optional<int32_t> StoredNumber(const std::optional<std::string>& text) {
    if (!text)
        return std::nullopt;
    if (*text == "true" || *text == "false")
        return *text == "true";
    const std::string_view trimmed = Trim(*text);
    if (trimmed.empty() || trimmed.find_first_not_of("+-0123456789") != std::string_view::npos)
        return std::nullopt;
    return ParseInt(trimmed);
}

}  // namespace lore
