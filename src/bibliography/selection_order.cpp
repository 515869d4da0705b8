#include "bibliography/selection_order.h"

#include <numeric>

namespace lore {

std::vector<uint32_t> SelectionOrder(const std::vector<std::string>& keys, std::string_view ceiling,
                                     SelectionPick pick) {
    std::vector<uint32_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0u);
    const bool last = pick == SelectionPick::LastNotAbove;
    const auto isPicked = [&](uint32_t i) { return last ? keys[i] <= ceiling : keys[i] < ceiling; };
    const auto picked = std::stable_partition(order.begin(), order.end(), isPicked);
    if (last)
        std::reverse(order.begin(), picked);
    std::stable_sort(order.begin(), picked, [&](uint32_t a, uint32_t b) { return keys[a] < keys[b]; });
    return order;
}

}  // namespace lore
