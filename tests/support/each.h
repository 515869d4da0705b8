#pragma once

#include <functional>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

namespace lore {

/// What a member or a function gives for each thing of a range, in order.
template <typename Range, typename Part>
auto Each(const Range& range, const Part& part) {
    using Reference = std::ranges::range_reference_t<const Range>;
    std::vector<std::decay_t<std::invoke_result_t<const Part&, Reference>>> parts;
    for (const auto& one : range)
        parts.push_back(std::invoke(part, one));
    return parts;
}

/// A text again and again.
inline std::string Repeated(std::string_view part, int times) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += part;
    return text;
}

}  // namespace lore
