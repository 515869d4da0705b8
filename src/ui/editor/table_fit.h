#pragma once

#include <QList>
#include <QTextCursor>
#include <QTextTable>

namespace lore {

// The columns of a table are shown in parts of the room around it, so that it never gets wider than the text. What a
// pixel of the stored width is in these parts stands in kPartProperty.

/// The stored widths of columns, in pixels of the zoom; 0 for one that states none.
QList<double> StoredWidths(const QTextTableFormat& format);
/// Shows columns of these widths in `room` pixels, narrower if they need more. Without a room they are shown as they
/// are.
void SetStoredWidths(QTextTableFormat& format, const QList<double>& widths, double room);

/// The pixels that a table has at a place of a text that is `textWidth` wide: those of the cell, within another table.
double RoomAt(const QTextCursor& place, double textWidth);
double RoomAround(const QTextTable& table, double textWidth);

/// Shows all tables within a frame in a text of another width. Those that change are steps of undo.
void FitTables(const QTextFrame& frame, double textWidth);

}  // namespace lore
