#include "notes/sort_order.h"

#include <memory>

#include "notes/sort_keys.h"
#include "notes/sort_selection.h"

namespace lore {

namespace {

constexpr NoteSortChoice kChoices[] = {
    {kAddToTop, "Add: To Top"},
    {kAddToBottom, "Add: To Bottom"},
    {kSourceUp, "Source: A to Z"},
    {kSourceDown, "Source: Z to A"},
    {kCategoryUp, "Categories: A to Z"},
    {kCategoryDown, "Categories: Z to A"},
    {kDateAddedUp, "Date Added: Past to Present"},
    {kDateAddedDown, "Date Added: Present to Past"},
};

constexpr char kLastText[] = "zzzzzzzzzzzzzzzzzzzzzzz";

/// The note that every other one has to come before. What can't isn't sorted.
ListedNote Limit(bool descending) {
    ListedNote limit{std::make_shared<CNote>(), nullptr, nullptr};
    limit.note->dateCreated = descending ? DateTime(1900, 1, 1, 1, 1, 1) : DateTime(2099, 1, 1, 1, 1, 1);
    limit.note->dateEdited = limit.note->dateCreated;
    limit.note->categories[0] = CProCategoryTree(kUnassignedID, descending ? "" : kLastText);
    if (!descending)
        limit.citations = std::make_shared<Citations>(Citations{kLastText});
    return limit;
}

}  // namespace

std::span<const NoteSortChoice> NoteSortChoices() {
    return kChoices;
}

std::vector<uint32_t> SortedOrder(std::span<const ListedNote> notes, int32_t sortId) {
    const bool descending = IsDescendingId(sortId);
    const ListedNote limit = Limit(descending);
    std::vector<uint32_t> sortable, behind;
    for (uint32_t i = 0; i < notes.size(); ++i) {
        const bool within = descending ? CompareNotes(notes[i], limit, sortId) : CompareNotes(limit, notes[i], sortId);
        (within ? sortable : behind).push_back(i);
    }
    std::vector<uint32_t> order;
    order.reserve(notes.size());
    for (const uint32_t picked : SelectionOrder(MakeSortKeys(notes, sortable, SortKeyOf(sortId)), descending))
        order.push_back(sortable[picked]);  // cppcheck-suppress containerOutOfBounds; it was filled above
    order.insert(order.end(), behind.begin(), behind.end());
    return order;
}

}  // namespace lore
