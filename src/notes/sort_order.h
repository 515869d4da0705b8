#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "notes/note_list.h"

namespace lore {

/// The sort numbers. They stand in the settings; never change.
enum NoteSortId : int32_t {
    kDateAddedUp = 701,
    kDateChangedUp = 702,
    kSourceUp = 703,
    kCategoryUp = 704,
    kAddToTop = 705,
    kDateAddedDown = 801,
    kDateChangedDown = 802,
    kSourceDown = 803,
    kCategoryDown = 804,
    kAddToBottom = 805,
};

/// An entry of the list of orders that is offered.
struct NoteSortChoice {
    int32_t id;
    const char* text;
};
/// The eight orders in the order in which they are offered. An active order that isn't among them shows the first one.
std::span<const NoteSortChoice> NoteSortChoices();

/// True if `other` may stand before `note` in the order of a sort number: its key is lower, or the keys are equal and
/// its date isn't later. False for every pair under a number that has no key.
bool CompareNotes(const ListedNote& note, const ListedNote& other, int32_t sortId);

/// True for a number that sorts: above 700 and none of the two "Add" orders.
bool IsSortingId(int32_t sortId);
/// Numbers from 800 on sort downwards.
bool IsDescendingId(int32_t sortId);

/// The notes in the order of a sort number, as positions in `notes`. The order is that of picking the extreme note
/// again and again, where a later note wins over an equal one: equal notes come out in reverse. Notes beyond the last
/// date or text that the order knows (an invalid date, a citation behind 23 letters z) follow behind the others in list
/// order. Takes n log n steps.
std::vector<uint32_t> SortedOrder(std::span<const ListedNote> notes, int32_t sortId);

}  // namespace lore
