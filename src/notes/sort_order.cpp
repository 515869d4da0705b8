#include "notes/sort_order.h"

#include <algorithm>
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

/// The order of notes with valid dates by date alone, as places in `positions`. Each save of a note makes it anew.
std::vector<uint32_t> DateOrder(std::span<const ListedNote> notes, const std::vector<uint32_t>& positions,
                                SortBy sortBy, bool descending) {
    struct Dated {
        int64_t seconds;
        uint32_t place;
    };
    std::vector<Dated> dated;
    dated.reserve(positions.size());
    for (uint32_t i = 0; i < positions.size(); ++i) {
        const CNote& note = *notes[positions[i]].note;
        dated.push_back({(sortBy == SortBy::DateChanged ? note.dateEdited : note.dateCreated).Seconds(), i});
    }
    std::sort(dated.begin(), dated.end(), [descending](const Dated& a, const Dated& b) {
        if (a.seconds != b.seconds)
            return descending ? a.seconds > b.seconds : a.seconds < b.seconds;
        return a.place > b.place;
    });
    std::vector<uint32_t> order;
    order.reserve(dated.size());
    for (const Dated& entry : dated)
        order.push_back(entry.place);
    return order;
}

}  // namespace

std::span<const NoteSortChoice> NoteSortChoices() {
    return kChoices;
}

std::vector<uint32_t> SortedOrder(std::span<const ListedNote> notes, int32_t sortId) {
    const bool descending = IsDescendingId(sortId);
    const SortBy sortBy = SortKeyOf(sortId);
    const bool byDate = sortBy == SortBy::DateAdded || sortBy == SortBy::DateChanged;
    const ListedNote limit = Limit(descending);
    std::vector<uint32_t> sortable, behind;
    for (uint32_t i = 0; i < notes.size(); ++i) {
        const bool within = descending ? CompareNotes(notes[i], limit, sortId) : CompareNotes(limit, notes[i], sortId);
        (within ? sortable : behind).push_back(i);
    }
    std::vector<uint32_t> order;
    order.reserve(notes.size());
    for (const uint32_t picked : byDate ? DateOrder(notes, sortable, sortBy, descending)
                                        : SelectionOrder(MakeSortKeys(notes, sortable, sortBy), descending))
        order.push_back(sortable[picked]);  // cppcheck-suppress containerOutOfBounds; it was filled above
    order.insert(order.end(), behind.begin(), behind.end());
    return order;
}

}  // namespace lore
