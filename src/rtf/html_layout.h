#pragma once

#include <string_view>
#include <vector>

#include "rtf/formats.h"

namespace lore {

/// The cells of a table that is read row by row, with those that go on from the rows above.
class HtmlTable {
public:
    static constexpr int kMostColumns = 60;

    bool in_row = false, in_cell = false;

    int Cells() const { return static_cast<int>(row_.size()); }
    bool IsFull() const { return Cells() == kMostColumns; }
    /// What the next cell spans.
    void SetSpans(int across, int down);
    /// Adds the cells that a cell takes; gives how many there is room for.
    int AddCell();
    /// Adds a cell that goes on from above, if the next one does.
    bool AddSpanned();
    /// The row, with columns of the same width and edges; the next row begins.
    RowFormat TakeRow();

private:
    struct Column {
        int rows = 0;  // that the cell goes on for
        CellMerge across = CellMerge::kNone;
    };

    std::vector<Column> columns_;
    std::vector<CellFormat> row_;
    int across_ = 1, down_ = 1;
};

/// Makes the list one of another kind; without marks its items are plain paragraphs.
void SetList(ParagraphFormat& format, ListKind kind);
/// The numbers that the type of a list asks for: "1", "a", "A", "i" or "I"; plain ones for any other.
ListKind NumbersOf(std::string_view type);

}  // namespace lore
