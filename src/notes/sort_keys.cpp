#include "notes/sort_keys.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/text.h"

namespace lore {

namespace {

/// Lets a view be looked up without making a text of it.
struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

/// Numbers texts as they come; later each number becomes the rank of its text.
class TextNumbers {
public:
    int32_t NumberOf(std::string_view text) {
        if (const auto known = numbers_.find(text); known != numbers_.end())
            return known->second;
        const auto number = static_cast<int32_t>(folded_.size());
        numbers_.emplace(text, number);
        folded_.push_back(ToLower(text));
        return number;
    }

    std::vector<int32_t> Ranks() const {
        std::vector<std::string_view> sorted(folded_.begin(), folded_.end());
        std::sort(sorted.begin(), sorted.end());
        sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
        std::vector<int32_t> ranks;
        ranks.reserve(folded_.size());
        for (const std::string& text : folded_) {
            const auto place = std::lower_bound(sorted.begin(), sorted.end(), std::string_view(text));
            ranks.push_back(static_cast<int32_t>(place - sorted.begin()));
        }
        return ranks;
    }

private:
    std::unordered_map<std::string, int32_t, TextHash, std::equal_to<>> numbers_;
    std::vector<std::string> folded_;
};

/// Everything that IsSameTree compares, as bytes.
void AppendTree(const CProCategoryTree& node, std::string& bytes) {
    const int64_t numbers[] = {node.id, node.parentID, static_cast<int64_t>(node.name.size()),
                               static_cast<int64_t>(node.children.size())};
    bytes.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
    bytes += node.name;
    for (const CProCategoryTree& child : node.children)
        AppendTree(child, bytes);
}

class KeyMaker {
public:
    SortKey Make(const ListedNote& note, SortBy sortBy) {
        const DateTime& date = note.note->dateCreated;
        SortKey key;
        key.date = date.Seconds();
        if (sortBy == SortBy::Sources)
            AddCitations(note, key);
        if (sortBy == SortBy::Categories)
            AddPath(SortPath(*note.note), key);
        key.tie = TieOf(std::move(tree_), date.GetStatus());
        tree_.clear();
        return key;
    }

    const TextNumbers& Texts() const { return texts_; }

private:
    void AddCitations(const ListedNote& note, SortKey& key) {
        for (const std::string& citation : SortCitations(note))
            key.levels.push_back(texts_.NumberOf(citation));
    }

    void AddPath(const CProCategoryTree& path, SortKey& key) {
        AppendTree(path, tree_);
        if (path.id < 1) {
            key.kind = SortKey::Kind::None;
            return;
        }
        if (path.IsUnassigned())
            key.kind = SortKey::Kind::Reserved;
        const CProCategoryTree* node = &path;
        while (true) {
            key.levels.push_back(texts_.NumberOf(Trim(node->name)));
            const CProCategoryTree* const child = node->children.empty() ? nullptr : &node->children.front();
            if (!child || child->id < 1) {
                key.openEnd = child && child->id == 0;
                return;
            }
            node = child;
        }
    }

    /// Dates of different status never tie, and an invalid one ties with none.
    int32_t TieOf(std::string tree, DateTime::Status status) {
        if (tree.empty() && status == DateTime::Status::Valid)
            return kPlainTie;
        const auto next = static_cast<int32_t>(ties_.size());
        tree += static_cast<char>(status);
        if (status == DateTime::Status::Invalid)
            tree += std::to_string(next);
        return ties_.try_emplace(std::move(tree), next).first->second;
    }

    static constexpr int32_t kPlainTie = -1;  // of nearly all notes that are sorted by source
    TextNumbers texts_;
    std::string tree_;
    std::unordered_map<std::string, int32_t> ties_;
};

}  // namespace

std::vector<SortKey> MakeSortKeys(std::span<const ListedNote> notes, const std::vector<uint32_t>& positions,
                                  SortBy sortBy) {
    KeyMaker maker;
    std::vector<SortKey> keys;
    keys.reserve(positions.size());
    for (const uint32_t position : positions)
        keys.push_back(maker.Make(notes[position], sortBy));
    const std::vector<int32_t> ranks = maker.Texts().Ranks();
    for (SortKey& key : keys) {
        for (int32_t& level : key.levels)
            level = ranks[static_cast<size_t>(level)];
    }
    return keys;
}

}  // namespace lore
