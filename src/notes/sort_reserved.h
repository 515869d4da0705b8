#pragma once

#include <cstdint>
#include <vector>

#include "notes/sort_key.h"

namespace lore {

/// True if some notes have no category and some the reserved one. Each of the two takes the other's place in a walk, so
/// that such keys have no order of their own: where the walk ends depends on how they alternate. So do, downwards, keys
/// without a category and those whose name is blank, which can't start a walk. No note that is written gets a path of
/// the reserved category or a blank name; only foreign or damaged files hold them.
bool TakesTurns(const SortKeys& keys, bool descending);

/// What SelectionOrder gives for such keys, by walking. Takes n squared steps on numbers at worst.
std::vector<uint32_t> TakingTurnsOrder(const SortKeys& keys, bool descending);

}  // namespace lore
