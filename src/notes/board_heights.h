#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lore {

/// The heights of all cards from top to bottom. A change and a look-up take log n steps.
class BoardHeights {
public:
    /// Replaces all heights; negative ones count as 0.
    void Assign(std::vector<int> heights);
    int Count() const { return static_cast<int>(heights_.size()); }
    int HeightOf(int row) const { return heights_[static_cast<size_t>(row)]; }
    void SetHeight(int row, int height);
    /// The sum of the heights above a row; that of all for Count().
    int64_t TopOf(int row) const;
    int64_t Total() const { return TopOf(Count()); }
    /// The row that holds a point; the first above all rows, the last below them, -1 without rows.
    int RowAt(int64_t y) const;

private:
    std::vector<int> heights_;
    std::vector<int64_t> sums_;  // binary indexed tree
};

}  // namespace lore
