#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "bibliography/selection_order.h"

namespace lore {

/// Citations behind this one aren't sorted.
inline constexpr std::string_view kCitationCeiling = "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzz";
static_assert(kCitationCeiling.size() == 30);

/// The positions of citations in their order, as SortSources has it.
inline std::vector<uint32_t> CitationOrder(std::vector<std::string> citations) {
    for (std::string& citation : citations)
        citation = ToLower(citation);
    return SelectionOrder(citations, kCitationCeiling, SelectionPick::LastNotAbove);
}

/// The same for formatted sources.
template <typename Sources>
std::vector<uint32_t> CitationOrder(const Sources& formatted) {
    std::vector<std::string> citations;
    for (const auto& source : formatted)
        citations.push_back(source.FormattedText);  // NOLINT: lists and vectors count their elements differently
    return CitationOrder(std::move(citations));
}

}  // namespace lore
