#pragma once

#include <algorithm>
#include <vector>

#include "base/long_list.h"

namespace lore {

/// Takes every id of `taken` out of a list in one walk. True if any stood in it.
inline bool RemoveEach(LongList& list, const LongList& taken) {
    const auto isTaken = [&](int32_t id) { return taken.Contains(id); };
    if (std::none_of(list.begin(), list.end(), isTaken))
        return false;
    std::vector<int32_t> kept;
    std::copy_if(list.begin(), list.end(), std::back_inserter(kept), [&](int32_t id) { return !isTaken(id); });
    list = LongList(std::move(kept));
    return true;
}

}  // namespace lore
