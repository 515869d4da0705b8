#include "ui/editor/document_fill.h"

#include <QPainter>
#include <QTextTable>
#include <QUrl>
#include <algorithm>
#include <map>

#include "rtf/kept_group.h"
#include "ui/board/rich_text_pictures.h"
#include "ui/editor/note_formats.h"
#include "ui/editor/table_fit.h"
#include "ui/editor/table_plan.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kCellPadding = 3;

QString ToText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).replace(u'\n', QChar::LineSeparator);
}

// What stands for a picture that can't be decoded: an empty frame.
QImage EmptyFrame(const QSizeF& size, const Theme& theme) {
    QImage image(size.toSize().expandedTo(QSize(24, 24)).boundedTo(QSize(800, 800)), QImage::Format_ARGB32);
    image.fill(theme.Color(ColorRole::Raised));
    QPainter painter(&image);
    painter.setPen(theme.Color(ColorRole::Edge));
    painter.drawRect(image.rect().adjusted(0, 0, -1, -1));
    return image;
}

// How an empty line looks beside text of this look.
CharFormat PlainLook(CharFormat look) {
    look.link = -1;
    look.background.reset();
    return look;
}

/// Whether the first paragraph of a piece goes on in this line.
bool GoesOnIn(const QTextBlock& line, const Document& piece) {
    return line.length() > 1 || piece.paragraphs.size() == 1;
}

/// Gives the lists of a piece ids that are new to the text, but for those that go on there.
void NumberLists(Document& piece, const QTextBlock& line, const NoteFormats& formats, bool isOwn) {
    std::map<int32_t, int32_t> ids;
    if (isOwn)
        for (const QTextBlock& beside : {line.previous(), line, line.next()})
            if (const int32_t id = formats.Paragraph(beside.blockFormat()).listId; id > 0)
                ids[id] = id;
    const ParagraphFormat first = piece.paragraphs.front().format, around = formats.Paragraph(line.blockFormat());
    if (GoesOnIn(line, piece) && first.list != ListKind::None && first.list == around.list &&
        first.listLevel == around.listLevel)
        ids[first.listId] = around.listId;
    int32_t next = formats.NewListId(*line.document());
    for (Paragraph& paragraph : piece.paragraphs) {
        if (paragraph.format.list == ListKind::None)
            continue;
        const auto [known, isNew] = ids.emplace(paragraph.format.listId, next);
        next = isNew && next < INT32_MAX ? next + 1 : next;
        paragraph.format.listId = known->second;
    }
}

class DocumentFill {
public:
    DocumentFill(const Document& document, QTextCursor& cursor, NoteFormats& formats, bool whole)
        : document_(document), cursor_(cursor), formats_(formats), whole_(whole), ground_(formats.Look().ground) {}

    void Fill() {
        joins_ = !whole_;
        if (!document_.runs.empty())
            above_ = PlainLook(document_.runs.front().format);
        FillRange(0, document_.paragraphs.size(), 0);
    }

private:
    struct Place {
        bool fresh = true;  // the cursor stands in an empty block that the next paragraph takes
        bool inCell = false;
    };

    void FillRange(size_t begin, size_t end, int level) {
        for (size_t i = begin; i < end;) {
            if (LevelOf(document_, i) > level)
                i = AddTable(i, end, level + 1);
            else
                AddParagraph(i++);
        }
    }

    CharFormat Own(const CharFormat& format) const { return whole_ ? format : formats_.Imported(format, document_); }

    void StartBlock() {
        if (!place_.fresh)
            cursor_.insertBlock(QTextBlockFormat(), QTextCharFormat());
        place_.fresh = false;
    }

    void AddParagraph(size_t i) {
        // The first paragraph of a piece goes on in the line that is there.
        const bool goesOn = joins_ && GoesOnIn(cursor_.block(), document_);
        joins_ = false;
        const bool beginsCell = place_.inCell && place_.fresh;
        StartBlock();
        place_.inCell = false;
        const auto runs = RunsOf(document_, i);
        const CharFormat first = runs.empty() ? above_ : runs.front().format;
        if (!runs.empty() || whole_)
            above_ = PlainLook(runs.empty() ? first : runs.back().format);
        if (!goesOn) {
            cursor_.setBlockFormat(formats_.Shown(document_.paragraphs[i].format));
            if (!beginsCell)
                cursor_.setBlockCharFormat(formats_.Shown(Own(PlainLook(first)), ground_));
        }
        for (const TextRun& run : runs)
            AddRun(run);
        AddKept(document_.paragraphs[i].end, first);
    }

    void AddKept(uint32_t position, const CharFormat& look) {
        for (; nextKept_ < document_.kept.size() && document_.kept[nextKept_].position <= position; ++nextKept_) {
            // Others name fonts and colours of the file that they come from.
            if (!whole_ && !IsUnshownText(document_.kept[nextKept_].rtf))
                continue;
            QTextCharFormat format = formats_.Shown(Own(look), ground_);
            format.setObjectType(kKeptObject);
            format.setProperty(kKeptProperty,
                               formats_.AddKept(std::make_shared<const std::string>(document_.kept[nextKept_].rtf)));
            cursor_.insertText(QString(QChar::ObjectReplacementCharacter), format);
        }
    }

    void AddRun(const TextRun& run) {
        AddKept(run.begin, run.format);
        if (run.kind == RunKind::Picture) {
            if (run.picture >= 0 && static_cast<size_t>(run.picture) < document_.pictures.size())
                InsertPicture(document_.pictures[static_cast<size_t>(run.picture)], Own(run.format), cursor_, formats_);
            return;
        }
        QTextCharFormat format = formats_.Shown(Own(run.format), ground_);
        if (run.kind != RunKind::Text)
            format.setProperty(kBreakProperty, static_cast<int>(run.kind));
        for (uint32_t at = run.begin; at < run.end;) {
            AddKept(at, run.format);
            const uint32_t stop =
                nextKept_ < document_.kept.size() ? std::min(run.end, document_.kept[nextKept_].position) : run.end;
            cursor_.insertText(ToText(std::string_view(document_.text).substr(at, stop - at)), format);
            at = stop;
        }
    }

    size_t AddTable(size_t begin, size_t limit, int level) {
        size_t end = begin;
        while (end < limit && LevelOf(document_, end) >= level)
            ++end;
        const TablePlan plan = PlanTable(document_, begin, end, level);
        if (!plan.table) {
            for (size_t i = begin; i < end; ++i)
                AddFlat(i);
            return end;
        }
        if (joins_ && cursor_.block().length() > 1)
            place_.fresh = false;
        joins_ = false;
        StartBlock();
        QTextBlockFormat phantom;
        phantom.setProperty(kPhantomProperty, true);
        cursor_.setBlockFormat(phantom);
        const QColor ground = ground_;
        QTextTable* table = MakeTable(plan);
        for (size_t r = 0; r < plan.rows.size(); ++r)
            FillRow(*table, plan, r, level);
        ground_ = ground;
        cursor_ = table->lastCursorPosition();
        cursor_.movePosition(QTextCursor::NextBlock);
        place_ = Place();
        return end;
    }

    // A paragraph of rows that make no grid remembers how it ends.
    void AddFlat(size_t i) {
        const Paragraph& paragraph = document_.paragraphs[i];
        AddParagraph(i);
        if (!whole_)
            return;
        QTextBlockFormat format = cursor_.blockFormat();
        format.setProperty(kFlatProperty, LevelOf(document_, i) << 8 | static_cast<int>(paragraph.endedBy));
        if (paragraph.endedBy == ParagraphEnd::Row) {
            const size_t row = document_.rows[static_cast<size_t>(paragraph.row)].format;
            format.setProperty(kFlatRowProperty,
                               formats_.AddRow(std::make_shared<const RowFormat>(document_.rowFormats[row])));
        }
        cursor_.setBlockFormat(format);
    }

    QTextTable* MakeTable(const TablePlan& plan) {
        QTextTableFormat format;
        format.setBorder(0);
        format.setCellSpacing(0);
        format.setBorderCollapse(true);
        const RichTextFormats screen = formats_.Screen();
        format.setCellPadding(
            std::max(screen.Pixels(plan.table->rows.front().format->cellGap), kCellPadding * formats_.Look().zoom));
        QList<double> widths;
        for (size_t c = 0; c + 1 < plan.edges.size(); ++c)
            widths.append(screen.Pixels(plan.edges[c + 1] - plan.edges[c]));
        SetStoredWidths(format, widths, RoomAt(cursor_, formats_.Look().widestPicture));
        format.setProperty(kTableProperty, formats_.AddTable(plan.table));
        QTextTable* table = cursor_.insertTable(static_cast<int>(plan.rows.size()), plan.table->columns, format);
        for (size_t r = 0; r < plan.table->rows.size(); ++r)
            for (const TableCell& cell : plan.table->rows[r].cells)
                if (!cell.covered && cell.columnSpan * cell.rowSpan > 1)
                    table->mergeCells(static_cast<int>(r), cell.column, cell.rowSpan, cell.columnSpan);
        return table;
    }

    void FillRow(QTextTable& table, const TablePlan& plan, size_t r, int level) {
        const NoteTableRow& row = plan.table->rows[r];
        for (size_t c = 0; c < row.cells.size(); ++c) {
            if (row.cells[c].covered)
                continue;
            const PlannedCell& planned = plan.rows[r].cells[c];
            const CellFormat& look = row.format->cells[c];
            ground_ = look.background ? formats_.GetTheme().Ground(
                                            QColor(look.background->red, look.background->green, look.background->blue))
                                      : formats_.Look().ground;
            QTextTableCell cell = table.cellAt(static_cast<int>(r), row.cells[c].column);
            QTextCharFormat format = cell.format();
            QTextCharFormat text = formats_.Shown(Own(FirstLook(planned)), ground_);
            text.clearBackground();
            format.merge(text);
            format.merge(formats_.Shown(look));
            cell.setFormat(format);
            cursor_ = cell.firstCursorPosition();
            place_ = Place{true, true};
            FillRange(planned.first, planned.last + 1, level);
        }
        // The groups at the end of the row stand in the plan.
        while (nextKept_ < document_.kept.size() &&
               document_.kept[nextKept_].position <= document_.paragraphs[plan.rows[r].end].end)
            ++nextKept_;
    }

    CharFormat FirstLook(const PlannedCell& cell) const {
        const auto runs = RunsOf(document_, cell.first);
        return PlainLook(runs.empty() ? above_ : runs.front().format);
    }

    const Document& document_;
    QTextCursor& cursor_;
    NoteFormats& formats_;
    const bool whole_;
    QColor ground_;
    CharFormat above_;
    Place place_;
    size_t nextKept_ = 0;
    bool joins_ = false;
};

}  // namespace

QTextImageFormat ShownPicture(std::shared_ptr<const Picture> picture, const CharFormat& look, QTextDocument& shown,
                              NoteFormats& formats) {
    const QImage image = DecodePicture(*picture);
    const QSizeF size = PictureSize(*picture, image) * formats.Look().zoom;
    QTextImageFormat format;
    format.merge(formats.Shown(look, formats.Look().ground));
    const int number = formats.AddPicture(std::move(picture));
    const QString name = QStringLiteral("picture:%1").arg(number);
    shown.addResource(QTextDocument::ImageResource, QUrl(name),
                      image.isNull() ? EmptyFrame(size, formats.GetTheme()) : image);
    format.setObjectType(QTextFormat::ImageObject);
    format.setName(name);
    format.setWidth(std::max(1.0, size.width()));
    format.setHeight(std::max(1.0, size.height()));
    format.setProperty(kPictureProperty, number);
    return format;
}

void InsertPicture(const Picture& picture, const CharFormat& look, QTextCursor& cursor, NoteFormats& formats) {
    cursor.insertImage(ShownPicture(std::make_shared<const Picture>(picture), look, *cursor.document(), formats));
}

void FillNote(const Document& document, QTextDocument& shown, NoteFormats& formats) {
    QTextCursor cursor(&shown);
    cursor.beginEditBlock();
    DocumentFill(document, cursor, formats, true).Fill();
    cursor.endEditBlock();
}

void InsertNote(Document document, QTextCursor& cursor, NoteFormats& formats, bool isOwn) {
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    NumberLists(document, cursor.block(), formats, isOwn);
    DocumentFill(document, cursor, formats, false).Fill();
    cursor.endEditBlock();
}

}  // namespace lore
