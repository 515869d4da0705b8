#include "notes/sort_selection.h"

#include <algorithm>
#include <compare>
#include <functional>
#include <iterator>
#include <memory>
#include <span>
#include <unordered_map>

#include "base/nearly_sorted.h"
#include "notes/sort_reserved.h"

namespace lore {

namespace {

using Numbers = std::vector<uint32_t>;
using Levels = std::span<const int32_t>;

Levels LevelsOf(const SortKeys& keys, uint32_t note) {
    return keys.LevelsOf(keys.GroupOf(note));
}

std::strong_ordering ThreeWay(Levels a, Levels b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
}

/// Keys with equal levels. A walk over them keeps to the tie that the first one left has, and ends at the best date of
/// it: the last one among equal dates.
class EqualKeys {
public:
    void Add(uint32_t key) { listed_.push_back(key); }

    void Order(const std::vector<SortKey>& keys, bool descending) {
        std::sort(listed_.begin(), listed_.end());
        byDate_ = listed_;
        std::sort(byDate_.begin(), byDate_.end(), [&](uint32_t a, uint32_t b) {
            if (keys[a].tie != keys[b].tie)
                return keys[a].tie < keys[b].tie;
            if (keys[a].date != keys[b].date)
                return descending ? keys[a].date > keys[b].date : keys[a].date < keys[b].date;
            return a > b;
        });
        for (uint32_t i = 0; i < byDate_.size(); ++i)
            nextOfTie_.try_emplace(keys[byDate_[i]].tie, i);
        left_ = listed_.size();
    }

    bool IsEmpty() const { return left_ == 0; }
    uint32_t First(const std::vector<bool>& taken) {
        while (taken[listed_[first_]])
            ++first_;
        return listed_[first_];
    }
    uint32_t Take(const std::vector<SortKey>& keys, const std::vector<bool>& taken) {
        --left_;
        return byDate_[nextOfTie_.find(keys[First(taken)].tie)->second++];
    }

private:
    Numbers listed_, byDate_;
    std::unordered_map<int32_t, uint32_t> nextOfTie_;
    size_t first_ = 0, left_ = 0;
};

/// The keys that begin with the same levels.
struct Node {
    EqualKeys closed, open;  // those that end here
    Numbers all;             // in list order; only where some are open
    size_t first = 0, left = 0;
    std::vector<std::unique_ptr<Node>> children;  // those that go on, best first
    size_t child = 0;
};

class Selection {
public:
    Selection(const SortKeys& keys, bool descending) : keys_(keys), descending_(descending), taken_(keys.notes.size()) {
        Numbers sorted;
        sorted.reserve(keys.notes.size());
        for (uint32_t i = 0; i < keys.notes.size(); ++i) {
            if (keys.notes[i].starts)
                sorted.push_back(i);
        }
        std::sort(sorted.begin(), sorted.end(),
                  [&](uint32_t a, uint32_t b) { return ThreeWay(LevelsOf(keys, a), LevelsOf(keys, b)) < 0; });
        root_ = Build(sorted.data(), sorted.data() + sorted.size(), 0);
    }

    Numbers Order() {
        Numbers order;
        order.reserve(root_->left);
        while (root_->left > 0)
            order.push_back(Pick());
        return order;
    }

private:
    uint32_t Pick() {
        std::vector<Node*>& path = path_;
        path.assign(1, root_.get());
        EqualKeys* group = nullptr;
        while (!(group = GroupToPick(*path.back())))
            path.push_back(NextChild(*path.back()));
        const uint32_t picked = group->Take(keys_.notes, taken_);
        taken_[picked] = true;
        for (Node* node : path)
            --node->left;
        return picked;
    }

    /// From keys sorted by levels, all equal before `level`.
    std::unique_ptr<Node> Build(const uint32_t* begin, const uint32_t* end, size_t level) {
        auto node = std::make_unique<Node>();
        node->left = static_cast<size_t>(end - begin);
        const auto levelsOf = [&](const uint32_t* key) { return LevelsOf(keys_, *key); };
        // Levels that all keys share decide nothing.
        while (begin != end && levelsOf(begin).size() > level && levelsOf(begin)[level] == levelsOf(end - 1)[level])
            ++level;
        const uint32_t* at = begin;
        for (; at != end && levelsOf(at).size() == level; ++at)
            (keys_.GroupOf(*at).openEnd ? node->open : node->closed).Add(*at);
        node->closed.Order(keys_.notes, descending_);
        node->open.Order(keys_.notes, descending_);
        if (!node->open.IsEmpty()) {
            node->all.assign(begin, end);
            std::sort(node->all.begin(), node->all.end());
        }
        while (at != end) {
            const uint32_t* const from = at;
            while (at != end && levelsOf(at)[level] == levelsOf(from)[level])
                ++at;
            node->children.push_back(Build(from, at, level + 1));
        }
        if (descending_)
            std::reverse(node->children.begin(), node->children.end());
        return node;
    }

    /// Where a walk over what is left below a node ends, or null if it ends below a child. A walk that begins with an
    /// open key stays with it, any other passes the open ones over.
    EqualKeys* GroupToPick(Node& node) {
        if (!node.open.IsEmpty()) {
            while (taken_[node.all[node.first]])
                ++node.first;
            if (node.open.First(taken_) == node.all[node.first])
                return &node.open;
        }
        const bool closedFirst = !descending_ || !NextChild(node);
        return closedFirst && !node.closed.IsEmpty() ? &node.closed : nullptr;
    }

    static Node* NextChild(Node& node) {
        while (node.child < node.children.size() && node.children[node.child]->left == 0)
            ++node.child;
        return node.child < node.children.size() ? node.children[node.child].get() : nullptr;
    }

    const SortKeys& keys_;
    const bool descending_;
    std::vector<bool> taken_;
    std::unique_ptr<Node> root_;
    std::vector<Node*> path_;
};

/// The order of keys none of whose groups is open: that of their levels, where a key stands before the longer ones that
/// begin with it.
class ClosedOrder {
public:
    ClosedOrder(const SortKeys& keys, bool descending) : keys_(keys), descending_(descending) {}

    Numbers Order() {
        std::vector<Place> places = Places();
        // A list that is sorted again, after a save, is in order but for one note and its equal ones.
        ReverseEqualRuns(places,
                         [this](const Place& a, const Place& b) { return a.date == b.date && Compare(a, b) == 0; });
        SortNearlySorted(places, [this](const Place& a, const Place& b) {
            if (const std::strong_ordering levels = Compare(a, b); levels != 0)
                return descending_ ? levels > 0 : levels < 0;
            if (a.date != b.date)
                return descending_ ? a.date > b.date : a.date < b.date;
            return a.key > b.key;
        });
        Numbers order;
        order.reserve(places.size());
        for (size_t from = 0, to = 0; from < places.size(); from = to) {
            bool oneTie = true;
            for (to = from; to < places.size() && Compare(places[from], places[to]) == 0; ++to)
                oneTie = oneTie && keys_.notes[places[to].key].tie == keys_.notes[places[from].key].tie;
            const std::span group(&places[from], to - from);
            if (oneTie)
                std::transform(group.begin(), group.end(), std::back_inserter(order), std::mem_fn(&Place::key));
            else
                AppendOfManyTies(group, order);
        }
        return order;
    }

private:
    struct Place {
        uint64_t start;  ///< the first two levels, which decide for nearly all; an absent one is below all others
        int64_t date;
        uint32_t key, group;
    };

    std::vector<Place> Places() const {
        std::vector<Place> places;
        places.reserve(keys_.notes.size());
        for (uint32_t i = 0; i < keys_.notes.size(); ++i) {
            const SortKey& key = keys_.notes[i];
            if (!key.starts)
                continue;
            const Levels levels = keys_.LevelsOf(keys_.groups[key.group]);
            const auto level = [&](size_t at) {
                return at < levels.size() ? static_cast<uint32_t>(levels[at]) + 1 : 0;
            };
            places.push_back({static_cast<uint64_t>(level(0)) << 32 | level(1), key.date, i, key.group});
        }
        return places;
    }

    std::strong_ordering Compare(const Place& a, const Place& b) const {
        if (a.start != b.start || a.group == b.group)
            return a.start <=> b.start;
        return ThreeWay(keys_.LevelsOf(keys_.groups[a.group]), keys_.LevelsOf(keys_.groups[b.group]));
    }

    void AppendOfManyTies(std::span<const Place> group, Numbers& order) {
        EqualKeys equal;
        for (const Place& place : group)
            equal.Add(place.key);
        equal.Order(keys_.notes, descending_);
        taken_.resize(keys_.notes.size());
        while (!equal.IsEmpty()) {
            order.push_back(equal.Take(keys_.notes, taken_));
            taken_[order.back()] = true;
        }
    }

    const SortKeys& keys_;
    const bool descending_;
    std::vector<bool> taken_;
};

}  // namespace

std::vector<uint32_t> SelectionOrder(const SortKeys& keys, bool descending) {
    if (TakesTurns(keys, descending))
        return TakingTurnsOrder(keys, descending);
    if (std::none_of(keys.groups.begin(), keys.groups.end(), [](const SortGroup& group) { return group.openEnd; }))
        return ClosedOrder(keys, descending).Order();
    return Selection(keys, descending).Order();
}

}  // namespace lore
