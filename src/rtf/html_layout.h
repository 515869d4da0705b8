#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "rtf/formats.h"

namespace lore {

/// The cells of a table that is read row by row, with those that go on from the rows above.
class HtmlTable {
public:
    static constexpr int kMostColumns = 60;

    bool inRow = false, inCell = false;

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
        CellMerge across = CellMerge::None;
    };

    std::vector<Column> columns_;
    std::vector<CellFormat> row_;
    int across_ = 1, down_ = 1;
};

/// Numbers the lists of a page, and knows what each has come to.
class HtmlLists {
public:
    /// The id of a list that begins with this number.
    int32_t Add(int start);
    /// A paragraph has ended.
    void Count(const ParagraphFormat& format);
    /// The number of the next item of a list.
    int Next(int32_t id) const { return lists_[static_cast<size_t>(id - 1)].next; }
    /// How many lists have items.
    size_t InUse() const { return inUse_; }

private:
    struct List {
        int next = 1;
        bool hasItems = false;
    };

    std::vector<List> lists_;  ///< by id, from 1
    size_t inUse_ = 0;
};

/// Makes the list one of another kind; without marks its items are plain paragraphs.
void SetList(ParagraphFormat& format, ListKind kind);
/// The number that a list or an item says that it has, if it says one.
std::optional<int16_t> NumberIn(std::string_view text);
/// The numbers that the type of a list asks for: "1", "a", "A", "i" or "I"; plain ones for any other.
ListKind NumbersOf(std::string_view type);

}  // namespace lore
