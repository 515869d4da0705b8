#include "notes/sort_keys.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

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

class KeyMaker {
public:
    KeyMaker(const ListedNote& limit, int32_t sortId)
        : limit_(limit), sortId_(sortId), byCategory_(SortKeyOf(sortId) == SortBy::Categories) {}

    SortKey Make(const ListedNote& note) {
        const SharedKey& shared = byCategory_ ? KeyOfPath(note) : KeyOfCitations(note);
        SortKey key = shared.key;
        if (shared.isLimit)
            key.starts = Starts(note);
        const DateTime& date = note.note->dateCreated;
        key.date = date.Seconds();
        if (date.GetStatus() != DateTime::Status::Valid)
            key.tie = TieOf(key.tie, date.GetStatus());
        return key;
    }

    const TextNumbers& Texts() const { return texts_; }

private:
    /// What notes of one path, or of the same citations, have in common.
    struct SharedKey {
        SortKey key;
        bool isLimit = false;  ///< they compare with the limit as equal, so that dates decide
    };

    bool Starts(const ListedNote& note) const {
        return IsDescendingId(sortId_) ? CompareNotes(note, limit_, sortId_) : CompareNotes(limit_, note, sortId_);
    }

    const SharedKey& KeyOfCitations(const ListedNote& note) {
        const auto [known, isNew] = byCitations_.try_emplace(note.citations.get());
        SharedKey& found = known->second;
        if (isNew) {
            for (const std::string& citation : SortCitations(note))
                found.key.levels.push_back(texts_.NumberOf(citation));
            found.key.starts = Starts(note);
            found.isLimit = std::ranges::equal(SortCitations(note), SortCitations(limit_),
                                               [](auto& own, auto& limit) { return CompareNoCase(own, limit) == 0; });
        }
        return found;
    }

    const SharedKey& KeyOfPath(const ListedNote& note) {
        const auto [known, isNew] = byPath_.try_emplace(note.sortPath.get());
        if (isNew)
            known->second = &KeyOfTree(note);
        return *known->second;
    }

    const SharedKey& KeyOfTree(const ListedNote& note) {
        const CProCategoryTree& path = SortPath(note);
        const auto [known, isNew] = paths_.try_emplace(path.Identity());
        SharedKey& found = known->second;
        if (isNew) {
            found.key = KeyOf(path);
            found.key.tie = static_cast<int32_t>(paths_.size());
            found.key.starts = Starts(note);
            found.isLimit = path.IsSameTree(SortPath(limit_));
        }
        return found;
    }

    SortKey KeyOf(const CProCategoryTree& path) {
        SortKey key;
        if (path.id < 1) {
            key.kind = SortKey::Kind::None;
            return key;
        }
        if (path.IsUnassigned())
            key.kind = SortKey::Kind::Reserved;
        const CProCategoryTree* node = &path;
        while (true) {
            key.levels.push_back(texts_.NumberOf(Trim(node->name)));
            const CProCategoryTree* const child = node->children.empty() ? nullptr : &node->children.front();
            if (!child || child->id < 1) {
                key.openEnd = child && child->id == 0;
                return key;
            }
            node = child;
        }
    }

    /// Dates of different status never tie, and an invalid one ties with none. Below 0, where no path has its tie.
    int32_t TieOf(int32_t tie, DateTime::Status status) {
        if (status == DateTime::Status::Invalid)
            return --lastOddTie_;
        const auto [known, isNew] = oddTies_.try_emplace({tie, status}, lastOddTie_ - 1);
        if (isNew)
            --lastOddTie_;
        return known->second;
    }

    const ListedNote& limit_;
    const int32_t sortId_;
    const bool byCategory_;
    TextNumbers texts_;
    std::unordered_map<const Citations*, SharedKey> byCitations_;
    std::unordered_map<std::string, SharedKey> paths_;  // by Identity
    std::unordered_map<const CProCategoryTree*, const SharedKey*> byPath_;
    std::map<std::pair<int32_t, DateTime::Status>, int32_t> oddTies_;
    int32_t lastOddTie_ = 0;
};

}  // namespace

std::vector<SortKey> MakeSortKeys(std::span<const ListedNote> notes, const ListedNote& limit, int32_t sortId) {
    KeyMaker maker(limit, sortId);
    std::vector<SortKey> keys;
    keys.reserve(notes.size());
    for (size_t i = 0; i < notes.size(); ++i) {
        FetchAhead(notes, i, &CNote::dateCreated);
        keys.push_back(maker.Make(notes[i]));
    }
    const std::vector<int32_t> ranks = maker.Texts().Ranks();
    for (SortKey& key : keys) {
        for (int32_t& level : key.levels)
            level = ranks[static_cast<size_t>(level)];
    }
    return keys;
}

}  // namespace lore
