#include "ui/editor/table_plan.h"

#include <algorithm>

namespace lore {
namespace {

// Cuts paragraphs into rows and cells; false if they don't end as a table does.
bool CutRows(const Document& document, size_t begin, size_t end, int level, std::vector<PlannedRow>& rows) {
    PlannedRow row;
    size_t first = begin;
    for (size_t i = begin; i < end; ++i) {
        if (LevelOf(document, i) != level || document.paragraphs[i].endedBy == ParagraphEnd::Paragraph)
            continue;
        if (document.paragraphs[i].endedBy == ParagraphEnd::Cell) {
            row.cells.push_back({first, i});
        } else if (document.paragraphs[i].endedBy == ParagraphEnd::Row && first == i && RunsOf(document, i).empty()) {
            row.end = i;
            rows.push_back(std::move(row));
            row = PlannedRow();
        } else {
            return false;
        }
        first = i + 1;
    }
    return row.cells.empty() && first == end && !rows.empty();
}

const RowFormat* FormatOf(const Document& document, const PlannedRow& row) {
    const int32_t index = document.paragraphs[row.end].row;
    if (index < 0 || static_cast<size_t>(index) >= document.rows.size())
        return nullptr;
    const size_t format = document.rows[static_cast<size_t>(index)].format;
    return format < document.rowFormats.size() ? &document.rowFormats[format] : nullptr;
}

bool FitsGrid(const PlannedRow& row, const std::vector<TableCell>& cells) {
    return row.cells.size() == cells.size() && std::all_of(cells.begin(), cells.end(), [](const TableCell& cell) {
               return cell.covered || cell.columnSpan >= 1;
           });
}

NoteTableRow RowOf(const Document& document, const PlannedRow& row, const std::vector<TableCell>& cells) {
    NoteTableRow kept;
    kept.format = std::make_shared<RowFormat>(*FormatOf(document, row));
    kept.cells = cells;
    const Paragraph& end = document.paragraphs[row.end];
    kept.end = end.format;
    for (const PlannedCell& cell : row.cells)
        kept.covered.push_back(document.paragraphs[cell.last].format);
    auto group = std::lower_bound(document.kept.begin(), document.kept.end(), end.begin,
                                  [](const KeptGroup& each, uint32_t at) { return each.position < at; });
    for (; group != document.kept.end() && group->position <= end.end; ++group)
        kept.kept.push_back(std::make_shared<const std::string>(group->rtf));
    return kept;
}

}  // namespace

int LevelOf(const Document& document, size_t paragraph) {
    const int32_t row = document.paragraphs[paragraph].row;
    return row < 0 || static_cast<size_t>(row) >= document.rows.size() ? 0
                                                                       : document.rows[static_cast<size_t>(row)].level;
}

TablePlan PlanTable(const Document& document, size_t begin, size_t end, int level) {
    TablePlan plan;
    if (!CutRows(document, begin, end, level, plan.rows))
        return plan;
    std::vector<int32_t> rows;
    for (const PlannedRow& row : plan.rows) {
        if (!FormatOf(document, row) || row.cells.empty())
            return plan;
        rows.push_back(document.paragraphs[row.end].row);
    }
    const TableGrid grid = MakeTableGrid(document, rows);
    auto table = std::make_shared<NoteTable>();
    table->columns = grid.Columns();
    for (size_t r = 0; r < plan.rows.size(); ++r) {
        if (grid.Columns() == 0 || !FitsGrid(plan.rows[r], grid.rows[r]))
            return plan;
        table->rows.push_back(RowOf(document, plan.rows[r], grid.rows[r]));
    }
    plan.table = std::move(table);
    plan.edges = grid.edges;
    return plan;
}

}  // namespace lore
