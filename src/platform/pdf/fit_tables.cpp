#include "platform/pdf/fit_tables.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <algorithm>
#include <vector>

namespace lore {

namespace {

constexpr qreal kEdges = 2;    // pixels of a table beside its columns
constexpr qreal kPadding = 8;  // of a cell, at both sides

qreal WidthOf(const QList<QTextLength>& columns, int first, int count) {
    qreal width = 0;
    for (qsizetype c = first; c < std::min<qsizetype>(first + count, columns.size()); ++c)
        width += columns[c].type() == QTextLength::FixedLength ? columns[c].rawValue() : 0;
    return width;
}

void FitColumns(QTextTable& table, qreal room) {
    QTextTableFormat format = table.format();
    QList<QTextLength> columns = format.columnWidthConstraints();
    const qreal whole = WidthOf(columns, 0, static_cast<int>(columns.size()));
    if (whole <= 0 || format.leftMargin() + whole + kEdges <= room)
        return;
    format.setLeftMargin(std::clamp(room - kEdges - whole, 0.0, format.leftMargin()));
    const qreal part = std::min(1.0, (room - kEdges) / whole);
    for (QTextLength& width : columns) {
        if (width.type() == QTextLength::FixedLength)
            width = QTextLength(QTextLength::FixedLength, width.rawValue() * part);
    }
    format.setColumnWidthConstraints(columns);
    table.setFormat(format);
}

void FitPictures(const QTextTableCell& cell, qreal room) {
    std::vector<QTextFragment> pictures;
    for (auto it = cell.begin(); !it.atEnd(); ++it) {
        for (auto piece = it.currentBlock().begin(); !piece.atEnd(); ++piece) {
            const QTextImageFormat picture = piece.fragment().charFormat().toImageFormat();
            if (picture.isValid() && picture.width() > room)
                pictures.push_back(piece.fragment());
        }
    }
    for (const QTextFragment& fragment : pictures) {
        QTextImageFormat picture = fragment.charFormat().toImageFormat();
        picture.setHeight(picture.height() * room / picture.width());
        picture.setWidth(room);
        QTextCursor place = cell.firstCursorPosition();
        place.setPosition(fragment.position());
        place.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
        place.setCharFormat(picture);
    }
}

}  // namespace

void FitTables(const QTextDocument& document, qreal room) {
    for (QTextFrame* const frame : document.rootFrame()->childFrames()) {
        auto* const table = qobject_cast<QTextTable*>(frame);
        if (!table)
            continue;
        FitColumns(*table, room);
        const QList<QTextLength> columns = table->format().columnWidthConstraints();
        for (int r = 0; r < table->rows(); ++r) {
            for (int c = 0; c < table->columns(); ++c) {
                const QTextTableCell cell = table->cellAt(r, c);
                const qreal width = WidthOf(columns, c, cell.columnSpan()) - kPadding;
                if (cell.row() == r && cell.column() == c && width > 1)
                    FitPictures(cell, width);
            }
        }
    }
}

}  // namespace lore
