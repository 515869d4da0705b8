#include "notes/sort_reserved.h"

#include <algorithm>
#include <span>

namespace lore {

namespace {

using Kind = SortGroup::Kind;

bool HasKind(const SortKeys& keys, Kind kind) {
    return std::any_of(keys.groups.begin(), keys.groups.end(),
                       [&](const SortGroup& group) { return group.kind == kind; });
}

bool StandsBefore(const SortKeys& keys, const SortGroup& a, const SortGroup& b) {
    const std::span<const int32_t> own = keys.LevelsOf(a), others = keys.LevelsOf(b);
    const auto [inA, inB] = std::mismatch(own.begin(), own.end(), others.begin(), others.end());
    if (inA != own.end() && inB != others.end())
        return *inA < *inB;
    return inA == own.end() && inB != others.end() && !a.openEnd;
}

/// Whether a note takes the place of the best one so far.
bool Displaces(const SortKeys& keys, uint32_t note, uint32_t best, bool descending) {
    const SortGroup &own = keys.GroupOf(note), &others = keys.GroupOf(best);
    if (own.kind == Kind::None && others.kind != Kind::None)
        return !descending || others.kind == Kind::Reserved;
    if (others.kind == Kind::None && own.kind != Kind::None)
        return descending || own.kind == Kind::Reserved;
    if (descending ? StandsBefore(keys, others, own) : StandsBefore(keys, own, others))
        return true;
    const SortKey &key = keys.notes[note], &bestKey = keys.notes[best];
    return key.tie == bestKey.tie && (descending ? key.date >= bestKey.date : key.date <= bestKey.date);
}

bool HasBlank(const SortKeys& keys) {
    return std::any_of(keys.notes.begin(), keys.notes.end(),
                       [&](const SortKey& key) { return !key.starts && keys.groups[key.group].kind == Kind::Plain; });
}

}  // namespace

bool TakesTurns(const SortKeys& keys, bool descending) {
    return HasKind(keys, Kind::None) && (HasKind(keys, Kind::Reserved) || (descending && HasBlank(keys)));
}

std::vector<uint32_t> TakingTurnsOrder(const SortKeys& keys, bool descending) {
    std::vector<uint32_t> order, best, left(keys.notes.size());
    order.reserve(keys.notes.size());
    for (uint32_t i = 0; i < left.size(); ++i)
        left[i] = i;
    // A walk repeats the last one up to the key that was picked, so that it can go on from there.
    size_t at = 0;
    while (!left.empty()) {
        for (; at < left.size(); ++at) {
            if (best.empty() ? keys.notes[left[at]].starts : Displaces(keys, left[at], best.back(), descending))
                best.push_back(left[at]);
        }
        if (best.empty())
            break;
        const auto picked = std::lower_bound(left.begin(), left.end(), best.back());
        at = static_cast<size_t>(picked - left.begin());
        order.push_back(best.back());
        left.erase(picked);
        best.pop_back();
    }
    return order;
}

}  // namespace lore
