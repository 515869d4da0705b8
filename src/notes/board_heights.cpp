#include "notes/board_heights.h"

#include <algorithm>
#include <bit>

namespace lore {

void BoardHeights::Assign(std::vector<int> heights) {
    heights_ = std::move(heights);
    sums_.assign(heights_.size() + 1, 0);
    for (size_t i = 1; i < sums_.size(); ++i) {
        int& height = heights_[i - 1];
        height = std::max(height, 0);
        sums_[i] += height;
        if (const size_t parent = i + (i & (~i + 1)); parent < sums_.size())
            sums_[parent] += sums_[i];
    }
}

void BoardHeights::SetHeight(int row, int height) {
    int& stored = heights_[static_cast<size_t>(row)];
    const int64_t change = int64_t{std::max(height, 0)} - stored;
    stored = std::max(height, 0);
    for (size_t i = static_cast<size_t>(row) + 1; change != 0 && i < sums_.size(); i += i & (~i + 1))
        sums_[i] += change;
}

int64_t BoardHeights::TopOf(int row) const {
    int64_t top = 0;
    for (size_t i = static_cast<size_t>(row); i > 0; i &= i - 1)
        top += sums_[i];
    return top;
}

int BoardHeights::RowAt(int64_t y) const {
    size_t row = 0;
    for (size_t step = std::bit_floor(heights_.size()); step > 0; step /= 2) {
        if (row + step < sums_.size() && sums_[row + step] <= y) {
            row += step;
            y -= sums_[row];
        }
    }
    return std::min(static_cast<int>(row), Count() - 1);
}

}  // namespace lore
