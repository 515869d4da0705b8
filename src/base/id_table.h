#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "base/id_marks.h"

namespace lore {

/// A value for each id, asked for all notes of a long list at once: ids as NoteBooks give them out are places in pages
/// of an array, any other id is hashed. Pages without a value take no memory but their place in the list of pages.
template <typename Value>
class IDTable {
public:
    /// The value of an id; Value() if none was set.
    Value ValueOf(int32_t id) const {
        const auto index = static_cast<uint32_t>(id);
        if (index >= kDenseIDs) {
            const auto found = high_.find(id);
            return found == high_.end() ? Value() : found->second;
        }
        const uint32_t page = index / kPageSize;
        return page < low_.size() && !low_[page].empty() ? low_[page][index % kPageSize] : Value();
    }
    /// The place of an id's value, made if there is none; valid until the next call.
    Value& operator[](int32_t id) {
        const auto index = static_cast<uint32_t>(id);
        if (index >= kDenseIDs)
            return high_[id];
        const uint32_t page = index / kPageSize;
        if (page >= low_.size())
            low_.resize(page + 1);
        if (low_[page].empty())
            low_[page].resize(kPageSize);
        return low_[page][index % kPageSize];
    }
    void Clear() {
        low_.clear();
        high_.clear();
    }

private:
    static constexpr uint32_t kPageSize = 1024;

    std::vector<std::vector<Value>> low_;
    std::unordered_map<int32_t, Value> high_;
};

}  // namespace lore
