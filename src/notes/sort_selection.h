#pragma once

#include <cstdint>
#include <vector>

#include "notes/sort_key.h"

namespace lore {

/// The order in which a selection picks the keys: each time one walk over what is left, where a key takes the place of
/// the best one so far if it stands before it, or if it is tied with it and its date isn't later (downwards: if it
/// stands behind it, or its date isn't earlier), and only a key that starts can be the first one. Positions in `keys`,
/// without those that no walk picks.
std::vector<uint32_t> SelectionOrder(const SortKeys& keys, bool descending);

}  // namespace lore
