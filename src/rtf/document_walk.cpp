#include "rtf/document_walk.h"

#include <algorithm>

#include "rtf/list_marks.h"

namespace lore {

namespace {

class Walk {
public:
    Walk(const Document& document, DocumentVisitor& visitor) : document_(document), visitor_(visitor) {}

    void Run() {
        for (size_t i = 0; i < document_.paragraphs.size();)
            i = document_.paragraphs[i].row < 0 ? Plain(i) : Table(i);
    }

private:
    size_t Plain(size_t i) {
        visitor_.Paragraph(i, marks_.NextNumber(document_.paragraphs[i].format));
        return i + 1;
    }

    bool IsOuterRow(int32_t row) const {
        return row >= 0 && static_cast<size_t>(row) < document_.rows.size() &&
               document_.rows[static_cast<size_t>(row)].level <= 1;
    }

    size_t Table(size_t begin) {
        size_t end = begin;
        std::vector<int32_t> rows;
        for (; end < document_.paragraphs.size() && document_.paragraphs[end].row >= 0; ++end) {
            const int32_t row = document_.paragraphs[end].row;
            if (IsOuterRow(row) && (rows.empty() || rows.back() != row))
                rows.push_back(row);
        }
        const TableGrid grid = MakeTableGrid(document_, rows);
        if (grid.Columns() == 0) {
            while (begin < end)
                begin = Plain(begin);
            return end;
        }
        visitor_.BeginTable(grid);
        for (size_t row = 0; row < rows.size(); ++row)
            begin = Row(grid, rows[row], grid.rows[row], begin, end);
        visitor_.EndTable();
        // Of a table within a cell that no row is around, in a file that breaks off.
        while (begin < end)
            begin = Plain(begin);
        return end;
    }

    /// Gives the first paragraph behind the row. What stands in a row without a cell for it, in a file that breaks off,
    /// goes into the last cell.
    size_t Row(const TableGrid&, int32_t row, const std::vector<TableCell>& cells, size_t begin, size_t end) {
        const RowFormat& format = document_.rowFormats[document_.rows[static_cast<size_t>(row)].format];
        visitor_.BeginRow();
        for (size_t c = 0; c < cells.size(); ++c) {
            const size_t behind = c + 1 < cells.size() ? BehindCell(row, begin, end) : BehindRow(row, begin, end);
            visitor_.BeginCell(cells[c], format.cells[c]);
            for (; begin < behind; ++begin) {
                if (!cells[c].covered && !IsRowEnd(begin))
                    Plain(begin);
            }
            visitor_.EndCell(cells[c]);
        }
        visitor_.EndRow();
        return cells.empty() ? BehindRow(row, begin, end) : begin;
    }

    bool IsRowEnd(size_t i) const {
        const Paragraph& paragraph = document_.paragraphs[i];
        return paragraph.endedBy == ParagraphEnd::Row && paragraph.begin == paragraph.end;
    }
    size_t BehindCell(int32_t row, size_t i, size_t end) const {
        while (i < end &&
               !(document_.paragraphs[i].row == row && document_.paragraphs[i].endedBy != ParagraphEnd::Paragraph))
            ++i;
        // The end of the row stays for its last cell.
        return i < end && document_.paragraphs[i].endedBy != ParagraphEnd::Row ? i + 1 : i;
    }
    size_t BehindRow(int32_t row, size_t i, size_t end) const {
        while (i < end && !(document_.paragraphs[i].row == row && document_.paragraphs[i].endedBy == ParagraphEnd::Row))
            ++i;
        return std::min(i + 1, end);
    }

    const Document& document_;
    DocumentVisitor& visitor_;
    ListMarks marks_;
};

}  // namespace

void WalkDocument(const Document& document, DocumentVisitor& visitor) {
    Walk(document, visitor).Run();
}

}  // namespace lore
