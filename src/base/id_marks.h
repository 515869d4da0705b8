#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace lore {

/// Below it, ids are worth places in an array: NoteBooks give them out one after the other.
inline constexpr uint32_t kDenseIDs = 1u << 22;

/// A set of ids for walks over long lists: ids as NoteBooks give them out are bits of an array, any other id is hashed.
/// Emptying it costs as much as filling it did. It takes a bit for each id up to the highest, which goes on rising as
/// notes come and go, at most half a megabyte.
class IDMarks {
public:
    void Clear() {
        for (const uint32_t word : used_)
            low_[word] = 0;
        used_.clear();
        high_.clear();
    }
    /// True if the id wasn't marked yet.
    bool Add(int32_t id) {
        const auto index = static_cast<uint32_t>(id);
        if (index >= kDenseIDs)
            return high_.insert(id).second;
        const uint32_t word = index / kWordBits;
        const uint64_t bit = uint64_t{1} << index % kWordBits;
        if (word >= low_.size())
            low_.resize(std::max<size_t>(word + 1, low_.size() * 2));
        if (low_[word] == 0)
            used_.push_back(word);
        const bool isNew = (low_[word] & bit) == 0;
        low_[word] |= bit;
        return isNew;
    }
    bool Contains(int32_t id) const {
        const auto index = static_cast<uint32_t>(id);
        if (index >= kDenseIDs)
            return high_.contains(id);
        const uint32_t word = index / kWordBits;
        return word < low_.size() && (low_[word] >> index % kWordBits & 1) != 0;
    }

private:
    static constexpr uint32_t kWordBits = 64;

    std::vector<uint64_t> low_;
    std::vector<uint32_t> used_;  // words that hold a mark
    std::unordered_set<int32_t> high_;
};

}  // namespace lore
