#include "ui/board/rich_text_view.h"

#include <QTextCursor>
#include <QTextTable>
#include <algorithm>
#include <cmath>

#include "rtf/paper.h"
#include "rtf/table_grid.h"
#include "ui/board/rich_text_formats.h"
#include "ui/board/rich_text_pictures.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kCellPadding = 3;

QString ToText(std::string_view utf8) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return text.replace(u'\n', QChar::LineSeparator);
}

/// Fills a document of the screen, paragraph by paragraph.
class RichTextBuilder {
public:
    RichTextBuilder(const Document& document, const RichTextLook& look, const Theme& theme, QTextDocument& shown)
        : document_(document),
          look_(look),
          theme_(theme),
          shown_(shown),
          formats_(document, look, theme),
          cursor_(&shown),
          ground_(look.ground) {}

    void Build() {
        cursor_.beginEditBlock();
        for (size_t i = 0; i < document_.paragraphs.size();)
            i = document_.paragraphs[i].row < 0 ? AddParagraph(i) : AddTable(i);
        cursor_.endEditBlock();
    }

private:
    size_t AddParagraph(size_t i) {
        const bool isBehindTable = fresh_ && i > 0;
        StartBlock(fresh_);
        fresh_ = false;
        FillBlock(i, false);
        // An empty block has no height there, which is right for the one that every table at the end has behind it.
        if (isBehindTable && cursor_.block().length() == 1 && i + 1 < document_.paragraphs.size())
            cursor_.insertText(QString(QChar::Nbsp));
        return i + 1;
    }

    // The first paragraph of a document or of a cell takes the block that is there already.
    void StartBlock(bool reuse) {
        if (!reuse)
            cursor_.insertBlock(QTextBlockFormat(), QTextCharFormat());
    }

    // The first block of a cell keeps its characters' format: the cell's own one stands there.
    void FillBlock(size_t i, bool beginsCell) {
        const Paragraph& paragraph = document_.paragraphs[i];
        cursor_.setBlockFormat(formats_.Paragraph(paragraph.format));
        const auto runs = RunsOf(document_, i);
        // An empty line looks like the text above it.
        const CharFormat first = runs.empty() ? above_ : runs.front().format;
        above_ = runs.empty() ? first : runs.back().format;
        above_.link = -1;
        above_.background.reset();
        if (!beginsCell)
            cursor_.setBlockCharFormat(formats_.Characters(first, ground_));
        if (const QString mark = counter_.NextMark(paragraph.format); !mark.isEmpty()) {
            CharFormat plain = first;
            plain.underline = plain.strike = false;
            plain.link = -1;
            plain.background.reset();
            cursor_.insertText(mark + u'\t', formats_.Characters(plain, ground_));
        }
        for (const TextRun& run : runs)
            AddRun(run);
    }

    void AddRun(const TextRun& run) {
        if (run.kind == RunKind::Picture)
            return AddPicture(run);
        cursor_.insertText(ToText(TextOf(document_, run)), formats_.Characters(run.format, ground_));
    }

    void AddPicture(const TextRun& run) {
        if (run.picture < 0 || static_cast<size_t>(run.picture) >= document_.pictures.size())
            return;
        const Picture& picture = document_.pictures[static_cast<size_t>(run.picture)];
        const QImage image = DecodePicture(picture);
        if (image.isNull())
            return cursor_.insertText(QStringLiteral("[picture]"), formats_.Characters(run.format, ground_));
        QSizeF size = PictureSize(picture, image) * look_.zoom;
        if (look_.widestPicture > 0 && size.width() > look_.widestPicture)
            size = QSizeF(look_.widestPicture, size.height() * look_.widestPicture / size.width());
        const QString name = QStringLiteral("picture:%1").arg(run.picture);
        shown_.addResource(QTextDocument::ImageResource, QUrl(name), image);
        QTextImageFormat format;
        format.setName(name);
        format.setWidth(std::max(1.0, size.width()));
        format.setHeight(std::max(1.0, size.height()));
        cursor_.insertImage(format);
    }

    bool IsOuterRow(int32_t row) const {
        return row >= 0 && static_cast<size_t>(row) < document_.rows.size() &&
               document_.rows[static_cast<size_t>(row)].level <= 1;
    }

    size_t AddTable(size_t begin) {
        size_t end = begin;
        std::vector<int32_t> rows;
        for (; end < document_.paragraphs.size() && document_.paragraphs[end].row >= 0; ++end)
            if (const int32_t row = document_.paragraphs[end].row;
                IsOuterRow(row) && (rows.empty() || rows.back() != row))
                rows.push_back(row);
        const TableGrid grid = MakeTableGrid(document_, rows);
        if (grid.Columns() == 0) {
            while (begin < end)
                begin = AddParagraph(begin);
            return end;
        }
        StartBlock(fresh_);
        QTextTable* table = InsertTable(grid, rows);
        FillTable(*table, grid, rows, begin, end);
        cursor_ = table->lastCursorPosition();
        cursor_.movePosition(QTextCursor::NextBlock);
        fresh_ = true;
        return end;
    }

    QTextTable* InsertTable(const TableGrid& grid, const std::vector<int32_t>& rows) {
        QTextTableFormat format;
        format.setBorder(0);
        format.setCellSpacing(0);
        format.setBorderCollapse(true);
        const size_t rowFormat = document_.rows[static_cast<size_t>(rows.front())].format;
        const double gap = formats_.Pixels(document_.rowFormats[rowFormat].cellGap);
        format.setCellPadding(std::max(gap, kCellPadding * look_.zoom));
        QList<QTextLength> widths;
        for (int column = 0; column < grid.Columns(); ++column)
            widths.append(QTextLength(QTextLength::FixedLength, ColumnWidth(grid, column)));
        format.setColumnWidthConstraints(widths);
        QTextTable* table = cursor_.insertTable(static_cast<int>(rows.size()), grid.Columns(), format);
        for (size_t r = 0; r < grid.rows.size(); ++r)
            for (const TableCell& cell : grid.rows[r])
                if (!cell.covered && cell.columnSpan * cell.rowSpan > 1)
                    table->mergeCells(static_cast<int>(r), cell.column, cell.rowSpan, cell.columnSpan);
        return table;
    }

    // A table that is wider than the card shrinks to it as a whole.
    double ColumnWidth(const TableGrid& grid, int column) const {
        const auto at = static_cast<size_t>(column);
        const double whole = formats_.Pixels(grid.edges.back() - grid.edges.front());
        const double shrink = look_.widestPicture > 0 && whole > look_.widestPicture ? look_.widestPicture / whole : 1;
        return formats_.Pixels(grid.edges[at + 1] - grid.edges[at]) * shrink;
    }

    void FillTable(QTextTable& table, const TableGrid& grid, const std::vector<int32_t>& rows, size_t begin,
                   size_t end) {
        size_t row = 0;
        for (size_t i = begin; i < end;) {
            // Paragraphs of a table within a cell come before the end of that cell and stand in it as plain ones.
            size_t last = i;
            while (last + 1 < end && !(IsOuterRow(document_.paragraphs[last].row) && EndsCell(last)))
                ++last;
            const Paragraph& closing = document_.paragraphs[last];
            if (IsOuterRow(closing.row))
                while (row + 1 < rows.size() && rows[row] != closing.row)
                    ++row;
            FillCell(table, grid, row, rows[row], closing, i, last);
            i = last + 1;
        }
    }

    bool EndsCell(size_t i) const {
        const ParagraphEnd ended = document_.paragraphs[i].endedBy;
        return ended == ParagraphEnd::Cell || ended == ParagraphEnd::Row;
    }

    void FillCell(QTextTable& table, const TableGrid& grid, size_t row, int32_t rowIndex, const Paragraph& closing,
                  size_t first, size_t last) {
        const auto cellIndex = static_cast<size_t>(std::max(0, closing.cell));
        const bool emptyEnd = closing.endedBy == ParagraphEnd::Row && first == last && closing.begin == closing.end;
        if (emptyEnd || cellIndex >= grid.rows[row].size() || grid.rows[row][cellIndex].covered)
            return;
        const size_t rowFormat = document_.rows[static_cast<size_t>(rowIndex)].format;
        const CellFormat& look = document_.rowFormats[rowFormat].cells[cellIndex];
        QTextTableCell cell = table.cellAt(static_cast<int>(row), grid.rows[row][cellIndex].column);
        QTextCharFormat cellFormat = cell.format();
        cellFormat.merge(formats_.Cell(look));
        cell.setFormat(cellFormat);
        ground_ = look.background ? ToGround(*look.background) : look_.ground;
        cursor_ = cell.firstCursorPosition();
        for (size_t i = first; i <= last; ++i) {
            StartBlock(i == first);
            FillBlock(i, i == first);
        }
        ground_ = look_.ground;
    }

    QColor ToGround(const TextColor& color) const { return theme_.Ground(QColor(color.red, color.green, color.blue)); }

    const Document& document_;
    const RichTextLook& look_;
    const Theme& theme_;
    QTextDocument& shown_;
    RichTextFormats formats_;
    ListCounter counter_;
    QTextCursor cursor_;
    QColor ground_;
    CharFormat above_;
    bool fresh_ = true;  // the cursor stands in an empty block that the next paragraph takes
};

}  // namespace

std::unique_ptr<QTextDocument> ShowRichText(const Document& document, const RichTextLook& look, const Theme& theme) {
    auto shown = std::make_unique<QTextDocument>();
    shown->setUndoRedoEnabled(false);
    shown->setDocumentMargin(0);
    QTextOption option;
    option.setTabStopDistance(kTabTwips / RichTextFormats::kTwipsPerPixel * look.zoom);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    shown->setDefaultTextOption(option);
    RichTextBuilder(document, look, theme, *shown).Build();
    return shown;
}

}  // namespace lore
