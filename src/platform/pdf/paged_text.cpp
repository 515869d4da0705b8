#include "platform/pdf/paged_text.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFrame>
#include <QTextLayout>
#include <QTextList>
#include <algorithm>
#include <cmath>

#include "platform/pdf/fit_to_page.h"
#include "rtf/list_marks.h"
#include "rtf/paper.h"

namespace lore {

namespace {

constexpr int kDotsPerInch = 1200;
constexpr qreal kMarginMillimeters = 20;
constexpr int kTextPixels = 15;
/// Room above and below the text of a page, so that what stands out of its first and last line isn't cut, nor shown on
/// the page before.
constexpr qreal kSlack = 16;

QFont TextFont() {
    QFont font("Liberation Serif");
    font.setPixelSize(kTextPixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// Longer texts aren't looked through for headings: each change of a break lays out the rest anew.
constexpr int kMostPagesToTidy = 300;

/// A single line of bold or of small letters is the heading of what follows.
bool IsHeading(const QTextBlock& block) {
    constexpr qreal kSmallPoints = 9;
    if (block.layout()->lineCount() != 1 || block.textList() || block.blockFormat().indent() > 0 || block.length() <= 1)
        return false;
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextCharFormat format = piece.fragment().charFormat();
        const qreal points = format.fontPointSize();
        if (format.fontWeight() < QFont::Bold && (points <= 0 || points > kSmallPoints))
            return false;
    }
    return true;
}

bool IsRule(const QTextBlock& block) {
    return block.text().startsWith(QChar(0x2500));
}

/// The first line of the headings that end with a block.
QTextBlock FirstHeading(QTextBlock block) {
    for (QTextBlock above = block.previous(); above.isValid() && IsHeading(above) && !IsRule(above);
         above = block.previous())
        block = above;
    return block;
}

/// Headings that stand last on a page go to the page of what they head.
void KeepHeadings(QTextDocument& document) {
    const QAbstractTextDocumentLayout& layout = *document.documentLayout();
    // The first line tells: a block whose first line has moved on begins where it would have stood.
    const auto pageOf = [&](const QTextBlock& block) {
        const qreal line = block.layout()->lineCount() > 0 ? block.layout()->lineAt(0).y() : 0;
        return static_cast<int>((layout.blockBoundingRect(block).top() + line) / document.pageSize().height());
    };
    if (document.pageCount() > kMostPagesToTidy)
        return;
    for (QTextBlock block = document.begin(); block.next().isValid(); block = block.next()) {
        const QTextBlock next = block.next();
        if (pageOf(next) == pageOf(block) || !IsHeading(block) || IsRule(block) || IsRule(next))
            continue;
        const QTextBlock first = FirstHeading(block);
        if (!first.previous().isValid() || pageOf(first.previous()) != pageOf(block))
            continue;  // they fill the page
        QTextBlockFormat format = first.blockFormat();
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(first).setBlockFormat(format);
    }
}

/// Letters for the mark of an item, which are those of its text; but no underlining, nor the colour of a link.
QTextCharFormat MarkLetters(const QTextBlock& item) {
    const QTextCharFormat first = item.begin().atEnd() ? item.charFormat() : item.begin().fragment().charFormat();
    QTextCharFormat letters;
    letters.setFont(first.font());
    letters.setFontUnderline(false);
    letters.setFontStrikeOut(false);
    if (!first.isAnchor() && first.hasProperty(QTextFormat::ForegroundBrush))
        letters.setForeground(first.foreground());
    return letters;
}

/// The page with the numbers that its lists begin with where the layout finds them: it doesn't read "start".
QString WithListStarts(QString html) {
    static const QRegularExpression kStart("<ol (start=\"(-?\\d+)\" style=\")");
    return html.replace(kStart, "<ol \\1-qt-list-number-prefix:'\\2';");
}

/// The layout counts all lists from 1: the items of one that begins otherwise become paragraphs with their marks.
void WriteMarks(QTextList& list) {
    const QTextListFormat look = list.format();
    ParagraphFormat item;
    // Both have the kinds in the same order.
    const int behindDecimal = QTextListFormat::ListDecimal - look.style();
    item.list = static_cast<ListKind>(static_cast<int>(ListKind::Decimal) + behindDecimal);
    int number = look.numberPrefix().toInt();
    for (int left = list.count(); left > 0; --left) {
        const QTextBlock block = list.item(0);
        list.remove(block);  // the last one takes the list with it
        const QTextCharFormat letters = MarkLetters(block);
        const QString mark = QString::fromStdString(MarkOf(item, number++));
        const qreal width = QFontMetricsF(letters.font()).horizontalAdvance(mark + ' ');
        QTextBlockFormat hanging = block.blockFormat();
        hanging.setTextIndent(-width);
        hanging.setTabPositions({QTextOption::Tab(width, QTextOption::LeftTab)});
        QTextCursor cursor(block);
        cursor.setBlockFormat(hanging);
        // Justified lines would stretch a blank; in one that runs from the right, a tab has no width.
        cursor.insertText(mark + (block.textDirection() == Qt::RightToLeft ? ' ' : '\t'), letters);
    }
}

/// The mark of an item is drawn in the letters of its paragraph, which are those of the page, whatever its text has:
/// it would hang above large letters, and touch them.
void LookAfterMarks(QTextDocument& document) {
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextList* const list = block.textList();
        if (!list)
            continue;
        if (list->format().hasProperty(QTextFormat::ListNumberPrefix)) {
            WriteMarks(*list);
        } else {
            cursor.setPosition(block.position());
            cursor.mergeBlockCharFormat(MarkLetters(block));  // the first one of a cell has the look of the cell, too
        }
    }
    cursor.endEditBlock();
}

/// An empty paragraph comes as a line break, which would be two lines; without anything in it, it would have no height
/// right behind a table.
void ShowBlankLines(QTextDocument& document) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.length() != 2 || block.text() != QChar(QChar::LineSeparator))
            continue;
        const QTextCharFormat letters = block.begin().fragment().charFormat();
        QTextCursor line(block);
        line.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        line.insertText(QString(QChar::Nbsp), letters);
    }
}

/// The text of a paragraph's lines whose middle is on a page, with the mark of its list.
QString LinesWithin(const QTextBlock& block, qreal top, const QRectF& page) {
    QString text;
    for (int i = 0; i < block.layout()->lineCount(); ++i) {
        const QTextLine line = block.layout()->lineAt(i);
        const qreal middle = top + line.y() + line.height() / 2;
        if (middle < page.top() || middle >= page.bottom())
            continue;
        if (i == 0 && block.textList())
            text = block.textList()->itemText(block) + ' ';
        text += QStringView(block.text()).mid(line.textStart(), line.textLength());
    }
    return text;
}

QRectF InPixels(const QRectF& inches) {
    constexpr int kPixels = PagedText::kPixelsPerInch;
    return QRectF(inches.topLeft() * kPixels, inches.size() * kPixels);
}

}  // namespace

PagedText::PagedText(const QString& html, const QPageLayout& paper)
    : paper_(InPixels(paper.fullRect(QPageLayout::Inch))), room_(InPixels(paper.paintRect(QPageLayout::Inch))) {
    document_.setUndoRedoEnabled(false);
    document_.setMetaInformation(QTextDocument::CssMedia, "print");
    document_.setDefaultFont(TextFont());
    document_.setUseDesignMetrics(true);
    // Otherwise links have the colour of the windows' links, which may be dark ones.
    document_.setDefaultStyleSheet("a { color: #0563c1; }");
    QTextOption option = document_.defaultTextOption();
    option.setTabStopDistance(qreal(kTabTwips) / kTwipsPerPixel);
    document_.setDefaultTextOption(option);
    document_.setHtml(WithListStarts(html));
    ShowBlankLines(document_);
    LookAfterMarks(document_);
    document_.setDocumentMargin(0);
    QTextFrameFormat frame = document_.rootFrame()->frameFormat();
    frame.setTopMargin(kSlack);
    frame.setBottomMargin(kSlack);
    document_.rootFrame()->setFrameFormat(frame);
    FitToPage(document_, QSizeF(room_.width(), std::floor(room_.height())));
    document_.setPageSize(QSizeF(room_.width(), std::floor(room_.height()) + 2 * kSlack));
    KeepHeadings(document_);
}

QString PagedText::TextOfPage(int page) const {
    const QAbstractTextDocumentLayout& layout = *document_.documentLayout();
    const QRectF sheet(QPointF(0, page * document_.pageSize().height()), document_.pageSize());
    QTextBlock block = document_.findBlock(std::max(layout.hitTest(sheet.topLeft(), Qt::FuzzyHit), 0));
    const int end = layout.hitTest(sheet.bottomRight(), Qt::FuzzyHit);
    QStringList paragraphs;
    for (; block.isValid() && block.position() <= end; block = block.next()) {
        const QString lines = LinesWithin(block, layout.blockBoundingRect(block).top(), sheet);
        if (!lines.isEmpty())
            paragraphs.append(lines);
    }
    return paragraphs.join('\n').replace(QChar(QChar::LineSeparator), '\n');
}

void PagedText::DrawPage(QPainter& painter, int page, int dotsPerInch) const {
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    const QSizeF size = document_.pageSize();
    context.clip = QRectF(QPointF(0, page * size.height()), size);
    const qreal scale = qreal(dotsPerInch) / kPixelsPerInch;
    painter.save();
    painter.scale(scale, scale);
    painter.save();
    painter.translate(room_.left(), room_.top() - kSlack - context.clip.top());
    painter.setClipRect(context.clip);
    document_.documentLayout()->draw(&painter, context);
    painter.restore();
    if (PageCount() > 1) {
        painter.setFont(document_.defaultFont());
        painter.setPen(Qt::black);
        painter.drawText(QRectF(0, room_.bottom(), paper_.width(), (paper_.bottom() - room_.bottom()) / 2),
                         Qt::AlignCenter | Qt::TextDontClip, QString::number(page + 1));
    }
    painter.restore();
}

QPageLayout StandardPaper() {
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                       QMarginsF(kMarginMillimeters, kMarginMillimeters, kMarginMillimeters, kMarginMillimeters),
                       QPageLayout::Millimeter);
}

std::string MakePdf(const PagedText& text, const QPageLayout& paper) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(kDotsPerInch);
    QPageLayout whole = paper;
    whole.setMode(QPageLayout::FullPageMode);
    writer.setPageLayout(whole);
    writer.setTitle(text.Title());
    writer.setCreator("Lorebinder");
    QPainter painter(&writer);
    for (int page = 0; page < text.PageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        text.DrawPage(painter, page, kDotsPerInch);
    }
    painter.end();
    return buffer.data().toStdString();
}

}  // namespace lore
