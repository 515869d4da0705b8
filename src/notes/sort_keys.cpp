#include "notes/sort_keys.h"

#include <algorithm>
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

class KeyMaker {
public:
    KeyMaker(const ListedNote& limit, int32_t sortId, size_t notes)
        : limit_(limit), sortId_(sortId), byCategory_(SortKeyOf(sortId) == SortBy::Categories) {
        keys_.notes.reserve(notes);
    }

    void Add(const ListedNote& note) {
        SortKey key;
        key.group = byCategory_ ? GroupOfPath(note) : GroupOfCitations(note);
        const Shared& shared = shared_[key.group];
        key.starts = shared.isLimit ? Starts(note) : shared.starts;
        const DateTime& date = note.Created();
        key.date = date.Seconds();
        key.tie = date.IsValid() ? shared.tie : TieOf(shared.tie, date.GetStatus());
        keys_.notes.push_back(key);
    }

    SortKeys Finish() && {
        const std::vector<int32_t> ranks = texts_.Ranks();
        for (int32_t& level : keys_.levels)
            level = ranks[static_cast<size_t>(level)];
        return std::move(keys_);
    }

private:
    /// What the notes of a group have in common beside their levels.
    struct Shared {
        int32_t tie = 0;
        bool starts = true;
        bool isLimit = false;  ///< they compare with the limit as equal, so that dates decide
    };

    bool Starts(const ListedNote& note) const {
        return IsDescendingId(sortId_) ? CompareNotes(note, limit_, sortId_) : CompareNotes(limit_, note, sortId_);
    }

    /// The levels of the group follow.
    uint32_t AddGroup(const Shared& shared) {
        keys_.groups.push_back({static_cast<uint32_t>(keys_.levels.size())});
        shared_.push_back(shared);
        return static_cast<uint32_t>(shared_.size() - 1);
    }
    void AddLevel(int32_t number) {
        keys_.levels.push_back(number);
        ++keys_.groups.back().levelCount;
    }

    uint32_t GroupOfCitations(const ListedNote& note) {
        // In a sorted list the notes that share their texts stand together. Elsewhere it costs less to number their
        // texts anew than to find what was.
        const Citations* const citations = note.citations.get();
        if (shared_.empty() || citations != lastCitations_) {
            lastCitations_ = citations;
            lastGroup_ = AddGroup({});
            int besideLimit = 0;
            for (const CitationText& text : SortCitations(note)) {
                const NumberedText& numbered = Find(text);
                if (keys_.groups.back().levelCount == 0)
                    besideLimit = numbered.besideLimit;
                AddLevel(numbered.number);
            }
            Shared& shared = shared_.back();
            shared.starts = besideLimit == 0 ? Starts(note) : besideLimit < 0;
            shared.isLimit = besideLimit == 0 && IsLimit(SortCitations(note));
        }
        return lastGroup_;
    }

    /// The text of a source, which notes share.
    struct NumberedText {
        int32_t number;
        int besideLimit;  ///< below 0 for one in front of the limit's text, above for one behind it, or else 0
    };
    const NumberedText& Find(const CitationText& text) {
        const auto [known, isNew] = byText_.try_emplace(text.Identity());
        if (isNew) {
            const Citations& limit = SortCitations(limit_);
            const std::string_view folded = text.Folded();
            known->second = {texts_.Add(folded), limit.empty() ? 0 : folded.compare(limit.front().Folded())};
        }
        return known->second;
    }

    bool IsLimit(const Citations& citations) const {
        const Citations& limit = SortCitations(limit_);
        return std::equal(citations.begin(), citations.end(), limit.begin(), limit.end(),
                          [](const CitationText& a, const CitationText& b) { return a.Folded() == b.Folded(); });
    }

    uint32_t GroupOfPath(const ListedNote& note) {
        const auto [known, isNew] = byPath_.try_emplace(note.sortPath.get());
        if (isNew)
            known->second = GroupOfTree(note);
        return known->second;
    }

    uint32_t GroupOfTree(const ListedNote& note) {
        const CProCategoryTree& path = SortPath(note);
        const auto [known, isNew] = paths_.try_emplace(path.Identity());
        if (isNew) {
            const auto tie = static_cast<int32_t>(paths_.size());
            known->second = AddGroup({tie, Starts(note), path.IsSameTree(SortPath(limit_))});
            AddPath(path, keys_.groups.back());
        }
        return known->second;
    }

    void AddPath(const CProCategoryTree& path, SortGroup& group) {
        if (path.id < 1) {
            group.kind = SortGroup::Kind::None;
            return;
        }
        if (path.IsUnassigned())
            group.kind = SortGroup::Kind::Reserved;
        const CProCategoryTree* node = &path;
        while (true) {
            AddLevel(texts_.NumberOf(Trim(node->name)));
            const CProCategoryTree* const child = node->children.empty() ? nullptr : &node->children.front();
            if (!child || child->id < 1) {
                group.openEnd = child && child->id == 0;
                return;
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
    SortKeys keys_;
    std::vector<Shared> shared_;  // of each group
    const Citations* lastCitations_ = nullptr;
    uint32_t lastGroup_ = 0;
    std::unordered_map<const void*, NumberedText> byText_;  // by Identity
    std::unordered_map<std::string, uint32_t> paths_;       // by Identity
    std::unordered_map<const CProCategoryTree*, uint32_t> byPath_;
    std::map<std::pair<int32_t, DateTime::Status>, int32_t> oddTies_;
    int32_t lastOddTie_ = 0;
};

}  // namespace

SortKeys MakeSortKeys(std::span<const ListedNote> notes, const ListedNote& limit, int32_t sortId) {
    KeyMaker maker(limit, sortId, notes.size());
    const bool bySource = SortKeyOf(sortId) == SortBy::Sources;
    for (size_t i = 0; i < notes.size(); ++i) {
        if (bySource)
            FetchCitationsAhead(notes, i);
        maker.Add(notes[i]);
    }
    return std::move(maker).Finish();
}

}  // namespace lore
