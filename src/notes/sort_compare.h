#pragma once

#include <cstdint>

#include "notes/note_list_entry.h"

namespace lore {

/// The sort numbers. They stand in the settings; never change.
enum NoteSortID : int32_t {
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

/// What a sort number compares.
enum class SortBy { Nothing, DateAdded, DateChanged, Sources, Categories };
SortBy SortKeyOf(int32_t sortId);

/// True for a number that sorts: above 700 and none of the two "Add" orders.
bool IsSortingId(int32_t sortId);
/// Numbers from 800 on sort downwards.
bool IsDescendingId(int32_t sortId);

/// True if `other` may stand before `note` in the upward order of a sort number: its key is lower, or the keys are
/// equal and its date isn't later. False for every pair under a number that compares nothing.
bool CompareNotes(const ListedNote& note, const ListedNote& other, int32_t sortId);

/// The path that categories sort by; an empty one if there is none.
const CProCategoryTree& SortPath(const ListedNote& note);
/// The texts that sources sort by.
const Citations& SortCitations(const ListedNote& note);

}  // namespace lore
