#include "notes/sort_order.h"

#include <algorithm>
#include <memory>

#include "base/nearly_sorted.h"
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

DateTime LimitDate(bool descending) {
    return descending ? DateTime(1900, 1, 1, 1, 1, 1) : DateTime(2099, 1, 1, 1, 1, 1);
}

/// The note that every other one has to come before. What can't isn't sorted.
ListedNote Limit(bool descending) {
    auto note = std::make_shared<CNote>();
    note->dateCreated = LimitDate(descending);
    note->categories[0] = CProCategoryTree(kUnassignedID, descending ? "" : kLastText);
    return {note, descending ? nullptr : std::make_shared<const Citations>(Citations{std::string(kLastText)})};
}

/// The order by date alone, which each save of a note makes anew.
std::vector<uint32_t> DateOrder(std::span<const ListedNote> notes, SortBy sortBy, bool descending) {
    struct Dated {
        int64_t seconds;
        uint32_t position;
    };
    const bool byChange = sortBy == SortBy::DateChanged;
    const DateTime limit = LimitDate(descending);
    std::vector<Dated> dated;
    std::vector<uint32_t> behind;
    dated.reserve(notes.size());
    for (uint32_t i = 0; i < notes.size(); ++i) {
        if (byChange)
            FetchAhead(notes, i, &CNote::dateEdited);
        const DateTime& date = byChange ? notes[i].note->dateEdited : notes[i].Created();
        if (descending ? limit.IsEarlierOrEqual(date) : date.IsEarlierOrEqual(limit))
            dated.push_back({date.Seconds(), i});
        else
            behind.push_back(i);
    }
    ReverseEqualRuns(dated, [](const Dated& a, const Dated& b) { return a.seconds == b.seconds; });
    SortNearlySorted(dated, [descending](const Dated& a, const Dated& b) {
        if (a.seconds != b.seconds)
            return descending ? a.seconds > b.seconds : a.seconds < b.seconds;
        return a.position > b.position;
    });
    std::vector<uint32_t> order;
    order.reserve(notes.size());
    for (const Dated& entry : dated)
        order.push_back(entry.position);
    order.insert(order.end(), behind.begin(), behind.end());
    return order;
}

}  // namespace

std::span<const NoteSortChoice> NoteSortChoices() {
    return kChoices;
}

std::vector<uint32_t> SortedOrder(std::span<const ListedNote> notes, int32_t sortId) {
    const bool descending = IsDescendingId(sortId);
    const SortBy sortBy = SortKeyOf(sortId);
    if (sortBy == SortBy::DateAdded || sortBy == SortBy::DateChanged)
        return DateOrder(notes, sortBy, descending);
    std::vector<uint32_t> order;
    if (sortBy != SortBy::Nothing)
        order = SelectionOrder(MakeSortKeys(notes, Limit(descending), sortId), descending);
    std::vector<bool> picked(notes.size());
    for (const uint32_t position : order)
        picked[position] = true;
    for (uint32_t i = 0; i < notes.size(); ++i) {
        if (!picked[i])
            order.push_back(i);
    }
    return order;
}

}  // namespace lore
