#include "ui/editor/table_fit.h"

#include <algorithm>
#include <numeric>

#include "ui/editor/note_formats.h"

namespace lore {
namespace {

double PartOf(const QTextTableFormat& format) {
    const double part = format.doubleProperty(kPartProperty);
    return part > 0 ? part : 1.0;
}

double CellRoom(const QTextTable& table, const QTextTableCell& cell, double textWidth) {
    const QTextTableFormat format = table.format();
    const QList<QTextLength> widths = format.columnWidthConstraints();
    const double around = RoomAround(table, textWidth);
    double room = 0;
    for (int c = cell.column(); c < std::min<int>(cell.column() + cell.columnSpan(), widths.size()); ++c)
        room += widths[c].value(around);
    return around > 0 ? std::max(1.0, room - 2 * format.cellPadding()) : 0;
}

}  // namespace

QList<double> StoredWidths(const QTextTableFormat& format) {
    QList<double> widths;
    for (const QTextLength& width : format.columnWidthConstraints())
        widths.append(width.type() == QTextLength::VariableLength ? 0 : width.rawValue() / PartOf(format));
    return widths;
}

void SetStoredWidths(QTextTableFormat& format, const QList<double>& widths, double room) {
    const double whole = std::accumulate(widths.begin(), widths.end(), 0.0);
    constexpr double kEdges = 2;  // pixels of the table beside its columns
    const bool asTheyAre = room <= kEdges || whole <= 0;
    const double part = asTheyAre ? 1.0 : 100 / std::max(whole * room / (room - kEdges), room);
    QList<QTextLength> shown;
    for (const double width : widths)
        shown.append(QTextLength(asTheyAre ? QTextLength::FixedLength : QTextLength::PercentageLength, width * part));
    format.setColumnWidthConstraints(shown);
    format.setProperty(kPartProperty, part);
}

double RoomAt(const QTextCursor& place, double textWidth) {
    const QTextTable* const table = place.currentTable();
    return table ? CellRoom(*table, table->cellAt(place), textWidth) : textWidth;
}

double RoomAround(const QTextTable& table, double textWidth) {
    const auto* const outer = qobject_cast<const QTextTable*>(table.parentFrame());
    return outer ? CellRoom(*outer, outer->cellAt(table.firstPosition()), textWidth) : textWidth;
}

void FitTables(const QTextFrame& frame, double textWidth) {
    for (QTextFrame* const inner : frame.childFrames()) {
        if (auto* const table = qobject_cast<QTextTable*>(inner)) {
            QTextTableFormat format = table->format();
            SetStoredWidths(format, StoredWidths(format), RoomAround(*table, textWidth));
            if (!qFuzzyCompare(PartOf(format), PartOf(table->format())))
                table->setFormat(format);
        }
        FitTables(*inner, textWidth);
    }
}

}  // namespace lore
