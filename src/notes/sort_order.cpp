#include "notes/sort_order.h"

#include <algorithm>
#include <memory>
#include <utility>

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

/// The note that every other one has to come before. What can't, such as a title in another script than the Latin one,
/// comes behind all others.
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

/// All positions of a list but those.
std::vector<uint32_t> PositionsBut(std::span<const uint32_t> those, size_t count) {
    std::vector<bool> left(count, true);
    for (const uint32_t position : those)
        left[position] = false;
    std::vector<uint32_t> positions;
    for (uint32_t i = 0; i < count; ++i) {
        if (left[i])
            positions.push_back(i);
    }
    return positions;
}

/// What can't come before the limit, in the same order among itself.
void AppendRest(SortKeys keys, bool descending, std::vector<uint32_t>& order) {
    const std::vector<uint32_t> rest = PositionsBut(order, keys.notes.size());
    for (size_t i = 0; i < rest.size(); ++i) {
        keys.notes[i] = keys.notes[rest[i]];
        keys.notes[i].starts = true;
    }
    keys.notes.resize(rest.size());
    if (rest.empty())
        return;
    for (const uint32_t position : SelectionOrder(keys, descending))
        order.push_back(rest[position]);
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
    if (sortBy == SortBy::Nothing)
        return PositionsBut({}, notes.size());
    SortKeys keys = MakeSortKeys(notes, Limit(descending), sortId);
    std::vector<uint32_t> order = SelectionOrder(keys, descending);
    AppendRest(std::move(keys), descending, order);
    return order;
}

}  // namespace lore
