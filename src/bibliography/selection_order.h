#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lore {

/// Which of the keys a selection of the minimum picks.
enum class SelectionPick {
    FirstBelow,    ///< the first of equal keys, if it is below the ceiling
    LastNotAbove,  ///< the last of equal keys, if it isn't above the ceiling
};

/// The positions in the order in which a list empties when the least key is picked again and again, starting each time
/// from the ceiling. Keys that are never picked follow in list order. Byte order; n log n.
std::vector<uint32_t> SelectionOrder(const std::vector<std::string>& keys, std::string_view ceiling,
                                     SelectionPick pick);

/// Puts the elements into an order of their positions.
template <typename Element>
void Reorder(std::vector<Element>& elements, const std::vector<uint32_t>& order) {
    std::vector<Element> ordered;
    ordered.reserve(elements.size());
    for (const uint32_t position : order)
        ordered.push_back(std::move(elements[position]));
    elements = std::move(ordered);
}

}  // namespace lore
