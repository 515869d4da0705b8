#pragma once

#include <algorithm>
#include <cstdint>

#include "base/id_table.h"

namespace lore {

/// What is known of the heights of cards, by note: a measured height, or an estimate until the card is laid out.
class CardHeights {
public:
    bool IsMeasured(int32_t id) const { return known_.ValueOf(id) > 0; }
    /// The height in pixels, or what `estimate` gives, which is kept.
    template <typename Estimate>
    int HeightOf(int32_t id, Estimate estimate) {
        const int32_t known = known_.ValueOf(id);
        if (known > 0)
            return known;
        if (known < 0)
            return -known - 1;
        const int height = std::max<int>(estimate(), 0);
        known_[id] = -height - 1;
        return height;
    }
    void SetMeasured(int32_t id, int height) { known_[id] = std::max(height, 1); }
    void Forget(int32_t id) {
        if (known_.ValueOf(id) != 0)
            known_[id] = 0;
    }

private:
    IDTable<int32_t> known_;  // 0 nothing known, above 0 measured, below 0 one less than an estimate negated
};

}  // namespace lore
