#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "bibliography/selection_order.h"
#include "bibliography/source.h"

namespace lore {

/// Citations after this one aren't sorted.
inline constexpr std::string_view kCitationCeiling = "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzz";
static_assert(kCitationCeiling.size() == 30);

/// The positions of formatted sources in their order, as SortSources has it.
template <typename Sources>
std::vector<uint32_t> CitationOrder(const Sources& formatted) {
    std::vector<std::string> keys;
    for (const auto& source : formatted)
        keys.push_back(ToLower(source.FormattedText));  // NOLINT: lists and vectors count their elements differently
    return SelectionOrder(keys, kCitationCeiling, SelectionPick::LastNotAbove);
}

}  // namespace lore
