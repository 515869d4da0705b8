#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "notes/note_list_entry.h"
#include "notes/sort_compare.h"

namespace lore {

/// An entry of the list of orders that is offered.
struct NoteSortChoice {
    int32_t id;
    const char* text;
};
/// The eight orders as they are offered. An active order that isn't among them shows the first one.
std::span<const NoteSortChoice> NoteSortChoices();

/// The notes in the order of a sort number, as positions in `notes`. The order is that of picking the extreme note
/// again and again, where a later note wins over an equal one: equal notes come out in reverse. Notes beyond the last
/// date or text that the order knows (an invalid date, a citation after 23 letters z) come after the others in list
/// order. Takes n log n steps.
std::vector<uint32_t> SortedOrder(std::span<const ListedNote> notes, int32_t sortId);

}  // namespace lore
