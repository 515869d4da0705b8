#pragma once

#include <QTextCursor>

namespace lore {

class NoteFormats;

// Tables of the editor's text. Each call is one step of undo; those that find no table do nothing.

/// Puts a table with edges behind the caret, as wide as `width` pixels; the caret goes to its first cell. Rows and
/// columns are held to 1 to 100 and 1 to 30.
void InsertTable(QTextCursor& cursor, int rows, int columns, double width, NoteFormats& formats);

enum class TablePart { RowAbove, RowBelow, ColumnBefore, ColumnAfter };
void AddTablePart(QTextCursor& cursor, TablePart part, NoteFormats& formats);
/// Removes the row or the column of the caret, the table with its last one.
void RemoveTableRow(QTextCursor& cursor);
void RemoveTableColumn(QTextCursor& cursor);
void RemoveTable(QTextCursor& cursor);

/// Moves to the next or the previous cell; the one behind the last is made with a new row. False outside tables.
bool MoveToCell(QTextCursor& cursor, bool forward, NoteFormats& formats);

}  // namespace lore
