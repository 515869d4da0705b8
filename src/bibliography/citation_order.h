#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "bibliography/selection_order.h"
#include "bibliography/source.h"

namespace lore {

/// Citations behind this one aren't sorted.
inline constexpr std::string_view kCitationCeiling = "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzz";
static_assert(kCitationCeiling.size() == 30);

/// What a formatted source is sorted by.
inline std::string CitationKey(const CSource& formatted) {
    return ToLower(formatted.FormattedText);
}

/// The positions of citation keys in their order, as SortSources has it.
inline std::vector<uint32_t> OrderOfCitationKeys(const std::vector<std::string>& keys) {
    return SelectionOrder(keys, kCitationCeiling, SelectionPick::LastNotAbove);
}

/// The same for formatted sources.
template <typename Sources>
std::vector<uint32_t> CitationOrder(const Sources& formatted) {
    std::vector<std::string> keys;
    for (const auto& source : formatted)
        keys.push_back(CitationKey(source));  // NOLINT: lists and vectors count their elements differently
    return OrderOfCitationKeys(keys);
}

}  // namespace lore
