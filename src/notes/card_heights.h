#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "base/id_marks.h"

namespace lore {

/// What is known of the heights of cards, by note: a measured height, or an estimate until the card is laid out. Asked
/// for all notes of a list whenever one of them is saved, so ids as NoteBooks give them out are places in an array.
class CardHeights {
public:
    bool IsMeasured(int32_t id) const { return Stored(id) > 0; }
    /// The height in pixels, or what `estimate` gives, which is kept.
    template <typename Estimate>
    int HeightOf(int32_t id, Estimate estimate) {
        const int32_t known = Stored(id);
        if (known > 0)
            return known;
        if (known < 0)
            return -known - 1;
        const int height = std::max<int>(estimate(), 0);
        Place(id) = -height - 1;
        return height;
    }
    void SetMeasured(int32_t id, int height) { Place(id) = std::max(height, 1); }
    void Forget(int32_t id) {
        if (Stored(id) != 0)
            Place(id) = 0;
    }

private:
    int32_t Stored(int32_t id) const {
        const auto index = static_cast<uint32_t>(id);
        if (index < kDenseIDs)
            return index < low_.size() ? low_[index] : 0;
        const auto found = high_.find(id);
        return found == high_.end() ? 0 : found->second;
    }
    int32_t& Place(int32_t id) {
        const auto index = static_cast<uint32_t>(id);
        if (index >= kDenseIDs)
            return high_[id];
        if (index >= low_.size())
            low_.resize(std::max<size_t>(index + 1, low_.size() * 2));
        return low_[index];
    }

    std::vector<int32_t> low_;  // by id: 0 nothing known, above 0 measured, below 0 one less than an estimate negated
    std::unordered_map<int32_t, int32_t> high_;
};

}  // namespace lore
