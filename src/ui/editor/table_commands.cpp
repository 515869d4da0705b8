#include "ui/editor/table_commands.h"

#include <QTextDocumentFragment>
#include <QTextTable>
#include <algorithm>
#include <numeric>

#include "ui/editor/note_formats.h"
#include "ui/editor/table_fit.h"
#include "ui/editor/table_shape.h"

namespace lore {
namespace {

constexpr double kCellPadding = 4;
constexpr CellFormat kPlainCell = {
    .rightEdge = 0, .borders = kBorderTop | kBorderLeft | kBorderBottom | kBorderRight, .background = std::nullopt};

// Cells that were added look like plain ones; their text looks as text does by default.
void Dress(QTextTable& table, int row, int column, NoteFormats& formats) {
    QTextTableCell cell = table.cellAt(row, column);
    if (cell.format().hasProperty(kCellProperty) && cell.format().hasProperty(kCharsProperty))
        return;
    QTextCharFormat format = cell.format();
    format.merge(formats.Shown(formats.Default(), formats.Look().ground));
    format.merge(formats.Shown(kPlainCell));
    cell.setFormat(format);
}

void DressAll(QTextTable& table, NoteFormats& formats) {
    for (int r = 0; r < table.rows(); ++r)
        for (int c = 0; c < table.columns(); ++c)
            Dress(table, r, c, formats);
}

// A new column takes its width from the others, so that the table stays as wide as it was.
void SpreadWidths(QTextTable& table, double whole, const NoteFormats& formats) {
    if (whole <= 0)
        return;
    QTextTableFormat format = table.format();
    SetStoredWidths(format, QList<double>(table.columns(), whole / table.columns()),
                    RoomAround(table, formats.Look().widestPicture));
    table.setFormat(format);
}

// Lets a cell that goes on below begin one row further down, with all that it holds.
void MoveDown(QTextTable& table, const QTextTableCell& cell) {
    const int row = cell.row(), column = cell.column(), across = cell.columnSpan(), down = cell.rowSpan();
    table.splitCell(row, column, 1, across);
    if (down > 2 || across > 1)
        table.mergeCells(row + 1, column, down - 1, across);
    QTextCursor words = table.cellAt(row, column).firstCursorPosition();
    const QTextBlock first = words.block();
    words.setPosition(table.cellAt(row, column).lastPosition(), QTextCursor::KeepAnchor);
    QTextTableCell below = table.cellAt(row + 1, column);
    QTextCharFormat look = table.cellAt(row, column).format();
    look.setTableCellRowSpan(below.rowSpan());
    look.setTableCellColumnSpan(below.columnSpan());
    below.setFormat(look);
    below.firstCursorPosition().insertFragment(words.selection());
    below.firstCursorPosition().setBlockFormat(first.blockFormat());
}

template <typename Change>
void ChangeTable(QTextCursor& cursor, const Change& change) {
    QTextTable* const table = cursor.currentTable();
    if (!table)
        return;
    cursor.beginEditBlock();
    ForgetShape(*table);
    change(*table, table->cellAt(cursor));
    cursor.endEditBlock();
}

}  // namespace

void InsertTable(QTextCursor& cursor, int rows, int columns, double width, NoteFormats& formats) {
    rows = std::clamp(rows, 1, 100);
    columns = std::clamp(columns, 1, 30);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const QTextBlockFormat around = cursor.blockFormat();
    if (cursor.block().length() > 1)
        cursor.insertBlock(QTextBlockFormat(), cursor.blockCharFormat());
    QTextBlockFormat phantom;
    phantom.setProperty(kPhantomProperty, true);
    cursor.setBlockFormat(phantom);
    QTextTableFormat format;
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setBorderCollapse(true);
    format.setCellPadding(kCellPadding);
    const double room = RoomAt(cursor, formats.Look().widestPicture);
    const double whole = room > 0 ? std::min(width, room) : width;
    SetStoredWidths(format, QList<double>(columns, std::max(20.0, whole / columns)), room);
    QTextTable* const table = cursor.insertTable(rows, columns, format);
    DressAll(*table, formats);
    QTextCursor behind = table->lastCursorPosition();
    behind.movePosition(QTextCursor::NextBlock);
    behind.setBlockFormat(around);
    cursor.endEditBlock();
    cursor = table->cellAt(0, 0).firstCursorPosition();
}

void AddTablePart(QTextCursor& cursor, TablePart part, NoteFormats& formats) {
    ChangeTable(cursor, [&](QTextTable& table, const QTextTableCell& cell) {
        const int columns = table.columns();
        const QList<double> widths = StoredWidths(table.format());
        const double whole = std::accumulate(widths.begin(), widths.end(), 0.0);
        if (part == TablePart::RowAbove)
            table.insertRows(cell.row(), 1);
        else if (part == TablePart::RowBelow)
            table.insertRows(cell.row() + cell.rowSpan(), 1);
        else if (part == TablePart::ColumnBefore)
            table.insertColumns(cell.column(), 1);
        else
            table.insertColumns(cell.column() + cell.columnSpan(), 1);
        if (table.columns() != columns)
            SpreadWidths(table, whole, formats);
        DressAll(table, formats);
    });
}

void RemoveTableRow(QTextCursor& cursor) {
    ChangeTable(cursor, [](QTextTable& table, const QTextTableCell& caret) {
        const int row = caret.row();
        // Cells stand in the order in which they begin: one that stayed behind would come in front of its row.
        for (int c = 0; c < table.columns(); ++c) {
            const QTextTableCell cell = table.cellAt(row, c);
            if (cell.row() == row && cell.rowSpan() > 1)
                MoveDown(table, cell);
        }
        table.removeRows(row, 1);
    });
}

void RemoveTableColumn(QTextCursor& cursor) {
    ChangeTable(cursor, [](QTextTable& table, const QTextTableCell& cell) { table.removeColumns(cell.column(), 1); });
}

void RemoveTable(QTextCursor& cursor) {
    ChangeTable(cursor, [](QTextTable& table, const QTextTableCell&) { table.removeRows(0, table.rows()); });
}

bool MoveToCell(QTextCursor& cursor, bool forward, NoteFormats& formats) {
    QTextTable* const table = cursor.currentTable();
    if (!table)
        return false;
    const QTextTableCell cell = table->cellAt(cursor);
    const bool last =
        cell.row() + cell.rowSpan() >= table->rows() && cell.column() + cell.columnSpan() >= table->columns();
    if (forward && last) {
        AddTablePart(cursor, TablePart::RowBelow, formats);
        cursor = table->cellAt(table->rows() - 1, 0).firstCursorPosition();
    } else {
        cursor.movePosition(forward ? QTextCursor::NextCell : QTextCursor::PreviousCell);
    }
    return true;
}

}  // namespace lore
