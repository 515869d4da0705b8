#include "rtf/table_grid.h"

#include <algorithm>
#include <cstdint>

namespace lore {
namespace {

constexpr int32_t kSameEdge = 30;    // twips within which two edges are one
constexpr size_t kMostColumns = 64;  // as many as office programs allow

const RowFormat* FormatOf(const Document& document, int32_t row) {
    const size_t format = document.rows[static_cast<size_t>(row)].format;
    return format < document.rowFormats.size() ? &document.rowFormats[format] : nullptr;
}

// What a table's rows hold and how wide their cells have to be for it.
struct RowContents {
    const RowFormat* format = nullptr;
    std::vector<bool> filled;    // for each cell of the format: whether more than an empty paragraph is in it
    std::vector<int32_t> edges;  // right ones, in order
    bool fits = true;            // no text without a cell
};

bool Holds(const Document& document, size_t i) {
    const Paragraph& paragraph = document.paragraphs[i];
    if (paragraph.begin != paragraph.end || !RunsOf(document, i).empty())
        return true;
    const auto kept = std::lower_bound(document.kept.begin(), document.kept.end(), paragraph.begin,
                                       [](const KeptGroup& group, uint32_t at) { return group.position < at; });
    return kept != document.kept.end() && kept->position <= paragraph.end;
}

int LevelOf(const Document& document, const Paragraph& paragraph) {
    return paragraph.row < 0 ? 0 : document.rows[static_cast<size_t>(paragraph.row)].level;
}

// What stands past the last cell counts as in it, and so does what the end of the row cuts off.
void MarkFilled(size_t cell, bool endsRow, RowContents& contents) {
    if (contents.filled.empty()) {
        contents.fits = false;
        return;
    }
    const size_t last = contents.filled.size() - 1;
    contents.filled[std::min(cell, last)] = true;
    contents.filled[last] = contents.filled[last] || endsRow;
}

void Fill(const Document& document, int32_t row, RowContents& contents) {
    const TableRow& own = document.rows[static_cast<size_t>(row)];
    contents.filled.resize(contents.format->cells.size());
    size_t cell = 0, count = 0;
    for (size_t i = own.first; i < document.paragraphs.size(); ++i) {
        const Paragraph& paragraph = document.paragraphs[i];
        const bool isOwn = paragraph.row == row;
        const bool endsRow = isOwn && paragraph.endedBy == ParagraphEnd::Row;
        if (!isOwn && LevelOf(document, paragraph) <= own.level)
            return;
        if (!endsRow || paragraph.begin != paragraph.end) {
            if (!isOwn || ++count > 1 || Holds(document, i))
                MarkFilled(cell, endsRow, contents);
        }
        if (endsRow)
            return;
        if (isOwn && paragraph.endedBy == ParagraphEnd::Cell) {
            ++cell;
            count = 0;
        }
    }
}

// As the row states them, but with room for what would be in no width.
std::vector<int32_t> RightEdges(const RowContents& contents) {
    constexpr int32_t kNarrowest = 600, kFarthest = INT32_MAX - kNarrowest;
    std::vector<int32_t> edges;
    int32_t left = contents.format->leftEdge;
    for (size_t c = 0; c < contents.filled.size(); ++c) {
        int32_t edge = contents.format->cells[c].rightEdge;
        if (contents.filled[c] && int64_t{edge} - left <= kSameEdge)
            edge = std::min(left, kFarthest) + kNarrowest;
        edges.push_back(edge);
        left = std::max(left, edge);
    }
    return edges;
}

std::vector<RowContents> ContentsOf(const Document& document, std::span<const int32_t> rows) {
    std::vector<RowContents> all;
    for (const int32_t row : rows) {
        RowContents& contents = all.emplace_back();
        contents.format = FormatOf(document, row);
        if (!contents.format)
            continue;
        Fill(document, row, contents);
        contents.edges = RightEdges(contents);
    }
    return all;
}

std::vector<int32_t> EdgesOf(const std::vector<RowContents>& rows) {
    std::vector<int32_t> all;
    for (const RowContents& row : rows) {
        if (!row.format)
            continue;
        all.push_back(row.format->leftEdge);
        all.insert(all.end(), row.edges.begin(), row.edges.end());
    }
    std::sort(all.begin(), all.end());
    std::vector<int32_t> edges;
    for (const int32_t edge : all)
        if ((edges.empty() || int64_t{edge} - edges.back() > kSameEdge) && edges.size() <= kMostColumns)
            edges.push_back(edge);
    return edges;
}

// The position of the edge that stands for `edge`.
int EdgeIndex(const std::vector<int32_t>& edges, int32_t edge) {
    const auto behind = std::upper_bound(edges.begin(), edges.end(), edge);
    return behind == edges.begin() ? 0 : static_cast<int>(behind - edges.begin()) - 1;
}

std::vector<TableCell> CellsOf(const RowContents& row, const TableGrid& grid) {
    std::vector<TableCell> cells;
    int left = EdgeIndex(grid.edges, row.format->leftEdge);
    size_t first = 0;  // the cell that the ones merged into it lengthen
    for (size_t c = 0; c < row.filled.size(); ++c) {
        const int right = std::clamp(EdgeIndex(grid.edges, row.edges[c]), left, grid.Columns());
        TableCell placed{left, right - left, 1, right == left};
        if (row.format->cells[c].across == CellMerge::Continued && c > 0 && !row.filled[c]) {
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

void JoinDown(const std::vector<RowContents>& rows, TableGrid& grid) {
    std::vector<std::pair<size_t, size_t>> open(static_cast<size_t>(grid.Columns()), {SIZE_MAX, 0});
    for (size_t r = 0; r < grid.rows.size(); ++r) {
        for (size_t c = 0; c < grid.rows[r].size(); ++c) {
            TableCell& cell = grid.rows[r][c];
            if (cell.covered)
                continue;
            auto& above = open[static_cast<size_t>(cell.column)];
            const CellMerge down = rows[r].format->cells[c].down;
            if (down == CellMerge::Continued && above.first != SIZE_MAX && !rows[r].filled[c] &&
                grid.rows[above.first][above.second].columnSpan == cell.columnSpan) {
                ++grid.rows[above.first][above.second].rowSpan;
                cell.covered = true;
                continue;
            }
            above = down == CellMerge::First ? std::pair{r, c} : std::pair{SIZE_MAX, size_t{0}};
        }
    }
}

bool HasRoomForAll(const std::vector<RowContents>& rows, const TableGrid& grid) {
    for (size_t r = 0; r < rows.size(); ++r) {
        for (size_t c = 0; c < grid.rows[r].size(); ++c) {
            if (grid.rows[r][c].covered && rows[r].filled[c])
                return false;
        }
        if (!rows[r].fits)
            return false;
    }
    return true;
}

}  // namespace

TableGrid MakeTableGrid(const Document& document, std::span<const int32_t> rows) {
    const std::vector<RowContents> contents = ContentsOf(document, rows);
    TableGrid grid;
    grid.edges = EdgesOf(contents);
    for (const RowContents& row : contents)
        grid.rows.push_back(row.format && grid.Columns() > 0 ? CellsOf(row, grid) : std::vector<TableCell>());
    if (grid.Columns() > 0)
        JoinDown(contents, grid);
    return HasRoomForAll(contents, grid) ? grid : TableGrid();
}

}  // namespace lore
