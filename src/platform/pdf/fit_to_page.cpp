#include "platform/pdf/fit_to_page.h"

#include <QFontMetricsF>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <algorithm>
#include <utility>
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

/// A picture stands on the line of its letters; below it there is room for theirs.
QSizeF FittedSize(const QTextImageFormat& picture, const QSizeF& room) {
    const QSizeF size(picture.width(), picture.height());
    const QSizeF most(room.width(), room.height() - QFontMetricsF(picture.font()).descent() - 1);
    return size.width() > most.width() || size.height() > most.height() ? size.scaled(most, Qt::KeepAspectRatio) : size;
}

void FitPictures(QTextFrame::iterator it, const QSizeF& room, QTextCursor place) {
    std::vector<std::pair<QTextCursor, QTextImageFormat>> fitted;
    for (; !it.atEnd(); ++it) {
        for (auto piece = it.currentBlock().begin(); !piece.atEnd(); ++piece) {
            const QTextFragment fragment = piece.fragment();
            QTextImageFormat picture = fragment.charFormat().toImageFormat();
            if (!picture.isValid())
                continue;
            const QSizeF size = FittedSize(picture, room);
            if (size == QSizeF(picture.width(), picture.height()))
                continue;
            picture.setWidth(size.width());
            picture.setHeight(size.height());
            place.setPosition(fragment.position());
            place.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            fitted.emplace_back(place, picture);
        }
    }
    for (auto& [there, picture] : fitted)
        there.setCharFormat(picture);
}

}  // namespace

void FitToPage(const QTextDocument& document, const QSizeF& room) {
    QTextFrame* const root = document.rootFrame();
    FitPictures(root->begin(), room, root->firstCursorPosition());
    for (QTextFrame* const frame : root->childFrames()) {
        auto* const table = qobject_cast<QTextTable*>(frame);
        if (!table)
            continue;
        FitColumns(*table, room.width());
        const QList<QTextLength> columns = table->format().columnWidthConstraints();
        for (int r = 0; r < table->rows(); ++r) {
            for (int c = 0; c < table->columns(); ++c) {
                const QTextTableCell cell = table->cellAt(r, c);
                const qreal width = WidthOf(columns, c, cell.columnSpan()) - kPadding;
                if (cell.row() == r && cell.column() == c)
                    FitPictures(cell.begin(), QSizeF(width > 1 ? width : room.width(), room.height() - kPadding),
                                cell.firstCursorPosition());
            }
        }
    }
}

}  // namespace lore
