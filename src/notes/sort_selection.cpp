#include "notes/sort_selection.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

#include "notes/sort_reserved.h"

namespace lore {

namespace {

using Numbers = std::vector<uint32_t>;

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
    Selection(const std::vector<SortKey>& keys, bool descending)
        : keys_(keys), descending_(descending), taken_(keys.size()) {
        Numbers sorted(keys.size());
        for (uint32_t i = 0; i < sorted.size(); ++i)
            sorted[i] = i;
        std::sort(sorted.begin(), sorted.end(),
                  [&](uint32_t a, uint32_t b) { return keys[a].levels < keys[b].levels; });
        root_ = Build(sorted.data(), sorted.data() + sorted.size(), 0);
    }

    uint32_t Pick() {
        std::vector<Node*>& path = path_;
        path.assign(1, root_.get());
        EqualKeys* group = nullptr;
        while (!(group = GroupToPick(*path.back())))
            path.push_back(NextChild(*path.back()));
        const uint32_t picked = group->Take(keys_, taken_);
        taken_[picked] = true;
        for (Node* node : path)
            --node->left;
        return picked;
    }

private:
    /// From keys sorted by levels, all equal before `level`.
    std::unique_ptr<Node> Build(const uint32_t* begin, const uint32_t* end, size_t level) {
        auto node = std::make_unique<Node>();
        node->left = static_cast<size_t>(end - begin);
        const auto levelsOf = [&](const uint32_t* key) -> const SortLevels& { return keys_[*key].levels; };
        // Levels that all keys share decide nothing.
        while (begin != end && levelsOf(begin).size() > level && levelsOf(begin)[level] == levelsOf(end - 1)[level])
            ++level;
        const uint32_t* at = begin;
        for (; at != end && levelsOf(at).size() == level; ++at)
            (keys_[*at].openEnd ? node->open : node->closed).Add(*at);
        node->closed.Order(keys_, descending_);
        node->open.Order(keys_, descending_);
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

    const std::vector<SortKey>& keys_;
    const bool descending_;
    std::vector<bool> taken_;
    std::unique_ptr<Node> root_;
    std::vector<Node*> path_;
};

}  // namespace

std::vector<uint32_t> SelectionOrder(const std::vector<SortKey>& keys, bool descending) {
    if (TakesTurns(keys))
        return TakingTurnsOrder(keys, descending);
    Selection selection(keys, descending);
    std::vector<uint32_t> order;
    order.reserve(keys.size());
    while (order.size() < keys.size())
        order.push_back(selection.Pick());
    return order;
}

}  // namespace lore
