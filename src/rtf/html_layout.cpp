#include "rtf/html_layout.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace lore {

namespace {

constexpr int kTableWidth = 9000;

}  // namespace

void HtmlTable::SetSpans(int across, int down) {
    constexpr int kMostRows = 1000;
    across_ = std::clamp(across, 1, kMostColumns);
    down_ = std::clamp(down, 1, kMostRows);
}

int HtmlTable::AddCell() {
    const int added = std::min(across_, kMostColumns - Cells());
    columns_.resize(std::max(columns_.size(), row_.size() + static_cast<size_t>(added)));
    for (int i = 0; i < added; ++i) {
        CellFormat& cell = row_.emplace_back();
        cell.across = i > 0 ? CellMerge::Continued : added > 1 ? CellMerge::First : CellMerge::None;
        cell.down = down_ > 1 ? CellMerge::First : CellMerge::None;
        columns_[row_.size() - 1] = {down_ - 1, cell.across};
    }
    SetSpans(1, 1);
    return added;
}

bool HtmlTable::AddSpanned() {
    const size_t next = row_.size();
    if (next >= columns_.size() || columns_[next].rows == 0)
        return false;
    --columns_[next].rows;
    CellFormat& cell = row_.emplace_back();
    cell.across = columns_[next].across;
    cell.down = CellMerge::Continued;
    return true;
}

RowFormat HtmlTable::TakeRow() {
    RowFormat row;
    row.cellGap = 100;
    row.cells = std::exchange(row_, {});
    const auto count = static_cast<int>(row.cells.size());
    for (int i = 0; i < count; ++i) {
        CellFormat& cell = row.cells[static_cast<size_t>(i)];
        cell.rightEdge = kTableWidth * (i + 1) / count;
        cell.borders = kBorderTop | kBorderLeft | kBorderBottom | kBorderRight;
    }
    inRow = inCell = false;
    SetSpans(1, 1);
    return row;
}

int32_t HtmlLists::Add(int start) {
    lists_.push_back({start});
    return static_cast<int32_t>(lists_.size());
}

void HtmlLists::Count(const ParagraphFormat& format) {
    if (format.list == ListKind::None)
        return;
    List& list = lists_[static_cast<size_t>(format.listId - 1)];
    ++list.next;
    inUse_ += std::exchange(list.hasItems, true) ? 0 : 1;
}

void SetList(ParagraphFormat& format, ListKind kind) {
    format.list = kind;
    if (kind != ListKind::None)
        return;
    const ParagraphFormat none;
    format.listId = none.listId;
    format.listLevel = none.listLevel;
    format.listStart = none.listStart;
    format.firstIndent = none.firstIndent;
}

std::optional<int16_t> NumberIn(std::string_view text) {
    if (text.find_first_of("0123456789") == std::string_view::npos)
        return std::nullopt;
    return static_cast<int16_t>(std::clamp(ParseInt(text), 0, 32767));
}

ListKind NumbersOf(std::string_view type) {
    constexpr std::string_view kTypes = "1aAiI";
    const size_t number = type.size() == 1 ? kTypes.find(type.front()) : std::string_view::npos;
    return number == std::string_view::npos ? ListKind::Decimal
                                            : static_cast<ListKind>(static_cast<size_t>(ListKind::Decimal) + number);
}

}  // namespace lore
