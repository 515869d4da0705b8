#include "rtf/table_grid.h"

#include <algorithm>

namespace lore {
namespace {

constexpr int32_t kSameEdge = 30;    // twips within which two edges are one
constexpr size_t kMostColumns = 64;  // as many as office programs allow

const RowFormat* FormatOf(const Document& document, int32_t row) {
    const size_t format = document.rows[static_cast<size_t>(row)].format;
    return format < document.row_formats.size() ? &document.row_formats[format] : nullptr;
}

std::vector<int32_t> EdgesOf(const Document& document, std::span<const int32_t> rows) {
    std::vector<int32_t> all;
    for (const int32_t row : rows) {
        const RowFormat* format = FormatOf(document, row);
        if (!format)
            continue;
        all.push_back(format->left_edge);
        for (const CellFormat& cell : format->cells)
            all.push_back(cell.right_edge);
    }
    std::sort(all.begin(), all.end());
    std::vector<int32_t> edges;
    for (const int32_t edge : all)
        if ((edges.empty() || edge - edges.back() > kSameEdge) && edges.size() <= kMostColumns)
            edges.push_back(edge);
    return edges;
}

// The position of the edge that stands for `edge`.
int EdgeIndex(const std::vector<int32_t>& edges, int32_t edge) {
    const auto behind = std::upper_bound(edges.begin(), edges.end(), edge);
    return behind == edges.begin() ? 0 : static_cast<int>(behind - edges.begin()) - 1;
}

std::vector<TableCell> CellsOf(const RowFormat& format, const TableGrid& grid) {
    std::vector<TableCell> cells;
    int left = EdgeIndex(grid.edges, format.left_edge);
    size_t first = 0;  // the cell that the ones merged into it lengthen
    for (const CellFormat& cell : format.cells) {
        const int right = std::clamp(EdgeIndex(grid.edges, cell.right_edge), left, grid.Columns());
        TableCell placed{left, right - left, 1, right == left};
        if (cell.across == CellMerge::kContinued && !cells.empty()) {
            placed.covered = true;
            cells[first].columnSpan += placed.columnSpan;
        } else {
            first = cells.size();
        }
        cells.push_back(placed);
        left = right;
    }
    return cells;
}

void JoinDown(const Document& document, std::span<const int32_t> rows, TableGrid& grid) {
    std::vector<std::pair<size_t, size_t>> open(static_cast<size_t>(grid.Columns()), {SIZE_MAX, 0});
    for (size_t r = 0; r < grid.rows.size(); ++r) {
        const RowFormat* format = FormatOf(document, rows[r]);
        for (size_t c = 0; c < grid.rows[r].size(); ++c) {
            TableCell& cell = grid.rows[r][c];
            if (cell.covered)
                continue;
            auto& above = open[static_cast<size_t>(cell.column)];
            const CellMerge down = format->cells[c].down;
            if (down == CellMerge::kContinued && above.first != SIZE_MAX &&
                grid.rows[above.first][above.second].columnSpan == cell.columnSpan) {
                ++grid.rows[above.first][above.second].rowSpan;
                cell.covered = true;
                continue;
            }
            above = down == CellMerge::kFirst ? std::pair{r, c} : std::pair{SIZE_MAX, size_t{0}};
        }
    }
}

}  // namespace

TableGrid MakeTableGrid(const Document& document, std::span<const int32_t> rows) {
    TableGrid grid;
    grid.edges = EdgesOf(document, rows);
    for (const int32_t row : rows) {
        const RowFormat* format = FormatOf(document, row);
        grid.rows.push_back(format && grid.Columns() > 0 ? CellsOf(*format, grid) : std::vector<TableCell>());
    }
    if (grid.Columns() > 0)
        JoinDown(document, rows, grid);
    return grid;
}

}  // namespace lore
