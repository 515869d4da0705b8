#include "notes/sort_reserved.h"

#include <algorithm>

namespace lore {

namespace {

bool HasKind(const std::vector<SortKey>& keys, SortKey::Kind kind) {
    return std::any_of(keys.begin(), keys.end(), [&](const SortKey& key) { return key.kind == kind; });
}

bool StandsBefore(const SortKey& a, const SortKey& b) {
    const auto [inA, inB] = std::mismatch(a.levels.begin(), a.levels.end(), b.levels.begin(), b.levels.end());
    if (inA != a.levels.end() && inB != b.levels.end())
        return *inA < *inB;
    return inA == a.levels.end() && inB != b.levels.end() && !a.openEnd;
}

/// Whether a key takes the place of the best one so far.
bool Displaces(const SortKey& key, const SortKey& best, bool descending) {
    using Kind = SortKey::Kind;
    if (key.kind == Kind::None && best.kind != Kind::None)
        return !descending || best.kind == Kind::Reserved;
    if (best.kind == Kind::None && key.kind != Kind::None)
        return descending || key.kind == Kind::Reserved;
    if (descending ? StandsBefore(best, key) : StandsBefore(key, best))
        return true;
    return key.tie == best.tie && (descending ? key.date >= best.date : key.date <= best.date);
}

}  // namespace

bool TakesTurns(const std::vector<SortKey>& keys, bool descending) {
    const auto isBlank = [](const SortKey& key) { return !key.starts && key.kind == SortKey::Kind::Plain; };
    return HasKind(keys, SortKey::Kind::None) &&
           (HasKind(keys, SortKey::Kind::Reserved) || (descending && std::any_of(keys.begin(), keys.end(), isBlank)));
}

std::vector<uint32_t> TakingTurnsOrder(const std::vector<SortKey>& keys, bool descending) {
    std::vector<uint32_t> order, best, left(keys.size());
    order.reserve(keys.size());
    for (uint32_t i = 0; i < left.size(); ++i)
        left[i] = i;
    // A walk repeats the last one up to the key that was picked, so that it can go on from there.
    size_t at = 0;
    while (!left.empty()) {
        for (; at < left.size(); ++at) {
            const SortKey& key = keys[left[at]];
            if (best.empty() ? key.starts : Displaces(key, keys[best.back()], descending))
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
