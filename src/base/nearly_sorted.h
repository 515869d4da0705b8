#pragma once

#include <algorithm>
#include <iterator>
#include <vector>

namespace lore {

/// Sorts like std::sort, by a `before` that holds for one of any two items. Where nearly all stand in order already it
/// takes one walk.
template <typename Item, typename Before>
void SortNearlySorted(std::vector<Item>& items, Before before) {
    constexpr size_t kMostStrays = 16;  // one of so many
    std::vector<Item> inOrder, strays;
    inOrder.reserve(items.size());
    for (const Item& item : items) {
        if (inOrder.empty() || before(inOrder.back(), item)) {
            inOrder.push_back(item);
            continue;
        }
        if (strays.size() >= items.size() / kMostStrays) {
            std::sort(items.begin(), items.end(), before);
            return;
        }
        // One that stands too early, or else it would make strays of all behind it.
        if (inOrder.size() == 1 || before(*(inOrder.end() - 2), item)) {
            strays.push_back(inOrder.back());
            inOrder.back() = item;
        } else {
            strays.push_back(item);
        }
    }
    std::sort(strays.begin(), strays.end(), before);
    std::merge(inOrder.begin(), inOrder.end(), strays.begin(), strays.end(), items.begin(), before);
}

/// Reverses each run of neighbours that are `equal`.
template <typename Item, typename Equal>
void ReverseEqualRuns(std::vector<Item>& items, Equal equal) {
    for (auto from = items.begin(); from != items.end();) {
        const auto to =
            std::find_if_not(std::next(from), items.end(), [&](const Item& item) { return equal(*from, item); });
        std::reverse(from, to);
        from = to;
    }
}

}  // namespace lore
