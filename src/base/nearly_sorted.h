#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace lore {

/// Sorts like std::sort, by a `before` that holds for one of any two items. Where nearly all stand in order already it
/// takes one walk.
template <typename Item, typename Before>
void SortNearlySorted(std::vector<Item>& items, Before before) {
    constexpr size_t kMostStrays = 16;  // one of so many
    std::vector<Item> strays;
    size_t inOrder = 0;  // so many items at the front
    for (size_t i = 0; i < items.size(); ++i) {
        if (inOrder == 0 || before(items[inOrder - 1], items[i])) {
            items[inOrder++] = items[i];
            continue;
        }
        if (strays.size() >= items.size() / kMostStrays) {
            std::copy(strays.begin(), strays.end(), items.begin() + static_cast<std::ptrdiff_t>(inOrder));
            std::sort(items.begin(), items.end(), before);
            return;
        }
        // One that stands too early, or else it would make strays of all behind it.
        if (inOrder == 1 || before(items[inOrder - 2], items[i])) {
            strays.push_back(items[inOrder - 1]);
            items[inOrder - 1] = items[i];
        } else {
            strays.push_back(items[i]);
        }
    }
    std::sort(strays.begin(), strays.end(), before);
    for (size_t to = items.size(); !strays.empty();) {  // from the end, so that nothing is written over
        if (inOrder == 0 || before(items[inOrder - 1], strays.back())) {
            items[--to] = strays.back();
            strays.pop_back();
        } else {
            items[--to] = items[--inOrder];
        }
    }
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
