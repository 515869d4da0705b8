#include "notes/sort_keys.h"

#include <deque>
#include <functional>
#include <map>
#include <numeric>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/nearly_sorted.h"
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
        const int32_t number = Add(own_.emplace_back(ToLower(text)));
        numbers_.emplace(text, number);
        return number;
    }
    /// A number of its own for a text in small letters, which has to stay.
    int32_t Add(std::string_view folded) {
        folded_.push_back(folded);
        return static_cast<int32_t>(folded_.size() - 1);
    }

    /// Equal for equal texts.
    std::vector<int32_t> Ranks() const {
        std::vector<int32_t> sorted(folded_.size()), ranks(folded_.size());
        std::iota(sorted.begin(), sorted.end(), 0);
        const auto text = [this](int32_t number) { return folded_[static_cast<size_t>(number)]; };
        // A sorted list hands them out in order.
        SortNearlySorted(sorted, [&](int32_t a, int32_t b) {
            const int order = text(a).compare(text(b));
            return order < 0 || (order == 0 && a < b);
        });
        int32_t rank = 0;
        for (size_t i = 0; i < sorted.size(); ++i) {
            rank += i > 0 && text(sorted[i]) != text(sorted[i - 1]) ? 1 : 0;
            ranks[static_cast<size_t>(sorted[i])] = rank;
        }
        return ranks;
    }

private:
    std::unordered_map<std::string, int32_t, TextHash, std::equal_to<>> numbers_;
    std::deque<std::string> own_;
    std::vector<std::string_view> folded_;
};

/// The numbers of the texts of sources, which notes share. `limit` may hold a text, beside which the others stand.
class CitationNumbers {
public:
    CitationNumbers(TextNumbers& texts, const Citations& limit) : texts_(texts), limit_(limit) {}

    struct Numbered {
        int32_t number;
        int besideLimit;  ///< below 0 for a text in front of the limit's, above for one behind it, or 0
    };
    const Numbered& Find(const CitationText& text) {
        // In a sorted list the notes of a source stand together.
        if (last_ && last_->first == text.Identity())
            return last_->second;
        const auto [known, isNew] = numbered_.try_emplace(text.Identity());
        if (isNew) {
            const std::string_view folded = text.Folded();
            known->second = {texts_.Add(folded), limit_.empty() ? 0 : folded.compare(limit_.front().Folded())};
        }
        last_ = &*known;
        return known->second;
    }

private:
    TextNumbers& texts_;
    const Citations& limit_;
    std::unordered_map<const void*, Numbered> numbered_;
    const std::pair<const void* const, Numbered>* last_ = nullptr;
};

class KeyMaker {
public:
    KeyMaker(const ListedNote& limit, int32_t sortId)
        : limit_(limit),
          sortId_(sortId),
          byCategory_(SortKeyOf(sortId) == SortBy::Categories),
          citations_(texts_, SortCitations(limit)) {}

    SortKey Make(const ListedNote& note) {
        SortKey key = byCategory_ ? KeyOfPath(note) : KeyOfCitations(note);
        const DateTime& date = note.note->dateCreated;
        key.date = date.Seconds();
        if (date.GetStatus() != DateTime::Status::Valid)
            key.tie = TieOf(key.tie, date.GetStatus());
        return key;
    }

    const TextNumbers& Texts() const { return texts_; }

private:
    /// What notes of one path have in common.
    struct SharedKey {
        SortKey key;
        bool isLimit = false;  ///< they compare with the limit as equal, so that dates decide
    };

    bool Starts(const ListedNote& note) const {
        return IsDescendingId(sortId_) ? CompareNotes(note, limit_, sortId_) : CompareNotes(limit_, note, sortId_);
    }

    SortKey KeyOfCitations(const ListedNote& note) {
        SortKey key;
        int besideLimit = 0;
        for (const CitationText& text : SortCitations(note)) {
            const CitationNumbers::Numbered& found = citations_.Find(text);
            if (key.levels.empty())
                besideLimit = found.besideLimit;
            key.levels.push_back(found.number);
        }
        key.starts = besideLimit == 0 ? Starts(note) : besideLimit < 0;
        return key;
    }

    SortKey KeyOfPath(const ListedNote& note) {
        const auto [known, isNew] = byPath_.try_emplace(note.sortPath.get());
        if (isNew)
            known->second = &KeyOfTree(note);
        SortKey key = known->second->key;
        if (known->second->isLimit)
            key.starts = Starts(note);
        return key;
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
    CitationNumbers citations_;
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
    const bool bySource = SortKeyOf(sortId) == SortBy::Sources;
    for (size_t i = 0; i < notes.size(); ++i) {
        FetchAhead(notes, i, &CNote::dateCreated);
        if (bySource)
            FetchCitationsAhead(notes, i);
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
