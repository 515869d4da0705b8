#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace lore {

/// A set of ids for walks over long lists: ids as NoteBooks give them out are looked up in an array, any other id
/// is hashed. Emptying it costs nothing.
class IDMarks {
public:
    void Clear() {
        ++round_;
        high_.clear();
    }
    /// True if the id wasn't marked yet.
    bool Add(int32_t id) {
        const auto index = static_cast<uint32_t>(id);
        if (index >= kLowIDs)
            return high_.insert(id).second;
        if (index >= low_.size())
            low_.resize(std::min<size_t>(kLowIDs, std::max<size_t>(index + 1, low_.size() * 2)));
        const bool isNew = low_[index] != round_;
        low_[index] = round_;
        return isNew;
    }
    bool Contains(int32_t id) const {
        const auto index = static_cast<uint32_t>(id);
        return index < kLowIDs ? index < low_.size() && low_[index] == round_ : high_.contains(id);
    }

private:
    static constexpr uint32_t kLowIDs = 1u << 22;

    std::vector<uint32_t> low_;  // by id: the round in which it was marked
    std::unordered_set<int32_t> high_;
    uint32_t round_ = 1;
};

}  // namespace lore
