#pragma once

#include <span>
#include <vector>

#include "rtf/document.h"

namespace lore {

/// Where a cell of a row stands in the grid of its table.
struct TableCell {
    int column = 0;
    int columnSpan = 1;
    int rowSpan = 1;
    bool covered = false;  ///< part of a merged cell that begins elsewhere; holds nothing
};

/// The grid of a table whose rows have edges of their own: one column between each two neighbouring edges. A cell that
/// is said to be merged into another and yet holds something stands on its own, as wide as it takes to see it.
struct TableGrid {
    std::vector<int32_t> edges;  ///< twips, ascending; one more than there are columns
    std::vector<std::vector<TableCell>> rows;

    int Columns() const { return edges.size() < 2 ? 0 : static_cast<int>(edges.size()) - 1; }
};

/// `rows`: indexes in Document::rows, the rows of one table from top to bottom. A table whose contents have no place in
/// any grid gets one without columns.
TableGrid MakeTableGrid(const Document& document, std::span<const int32_t> rows);

}  // namespace lore
