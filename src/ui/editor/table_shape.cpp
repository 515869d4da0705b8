#include "ui/editor/table_shape.h"

#include "ui/editor/table_fit.h"

namespace lore {
namespace {

constexpr double kUnstatedWidth = 100;  // pixels of a column that states none
constexpr int32_t kCellGap = 108;       // twips, as office programs have it

std::vector<int32_t> EdgesOf(const QTextTable& table, double zoom) {
    std::vector<int32_t> edges = {0};
    const QList<double> widths = StoredWidths(table.format());
    double at = 0;
    for (int c = 0; c < table.columns(); ++c) {
        const bool stated = c < widths.size() && widths[c] > 0;
        at += (stated ? widths[c] / zoom : kUnstatedWidth) * RichTextFormats::kTwipsPerPixel;
        edges.push_back(qRound(at));
    }
    return edges;
}

NoteTableRow RowFrom(const QTextTable& table, int r, const std::vector<int32_t>& edges, const NoteFormats& formats) {
    NoteTableRow row;
    auto format = std::make_shared<RowFormat>();
    format->cellGap = kCellGap;
    for (int c = 0; c < table.columns();) {
        const QTextTableCell cell = table.cellAt(r, c);
        CellFormat look = formats.Cell(cell.format());
        const int span = std::max(1, cell.columnSpan());
        look.rightEdge = edges[static_cast<size_t>(std::min(c + span, table.columns()))];
        if (cell.rowSpan() > 1)
            look.down = cell.row() == r ? CellMerge::First : CellMerge::Continued;
        format->cells.push_back(look);
        row.cells.push_back({c, span, std::max(1, cell.rowSpan()), cell.row() != r});
        row.covered.emplace_back();
        c += span;
    }
    row.format = std::move(format);
    return row;
}

}  // namespace

std::shared_ptr<const NoteTable> ShapeOf(QTextTable& table, const NoteFormats& formats) {
    std::shared_ptr<const NoteTable> read = formats.TableOf(table.format());
    if (read && read->columns == table.columns() && read->rows.size() == static_cast<size_t>(table.rows()))
        return read;
    auto made = std::make_shared<NoteTable>();
    made->columns = table.columns();
    const std::vector<int32_t> edges = EdgesOf(table, formats.Look().zoom);
    for (int r = 0; r < table.rows(); ++r)
        made->rows.push_back(RowFrom(table, r, edges, formats));
    return made;
}

void ForgetShape(QTextTable& table) {
    QTextTableFormat format = table.format();
    format.clearProperty(kTableProperty);
    table.setFormat(format);
}

}  // namespace lore
