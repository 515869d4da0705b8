#pragma once

#include <memory>
#include <vector>

#include "rtf/document.h"
#include "ui/editor/note_formats.h"

namespace lore {

/// The paragraphs of a cell, first and last.
struct PlannedCell {
    size_t first = 0;
    size_t last = 0;
};
struct PlannedRow {
    std::vector<PlannedCell> cells;
    size_t end = 0;  ///< the paragraph that ends the row
};

/// How the rows of a table are cut into cells.
struct TablePlan {
    std::vector<PlannedRow> rows;
    std::shared_ptr<NoteTable> table;  ///< null for rows that make no grid: they are shown as plain paragraphs
    std::vector<int32_t> edges;        ///< twips, one more than columns
};

/// The level of tables that a paragraph stands in, 0 outside.
int LevelOf(const Document& document, size_t paragraph);

/// Plans the table of `level` whose paragraphs are those from `begin` to before `end`.
TablePlan PlanTable(const Document& document, size_t begin, size_t end, int level);

}  // namespace lore
