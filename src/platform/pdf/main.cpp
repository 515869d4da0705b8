#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <cstdio>
#include <string>

#include "base/file_io.h"

// lorebinder-pdf IN.html OUT.pdf: a page of HTML as a PDF file for A4 paper, its fonts embedded, its links alive, pages
// numbered. Ends with 0, with 1 if a file can't be read or written, with 2 for wrong arguments.

namespace {

// The page is laid out in pixels of the screen, the unit of its indents, and drawn larger: a layout for the paper
// itself would take those pixels as dots of the printer.
constexpr int kPixelsPerInch = 96;
constexpr int kDotsPerInch = 1200;
constexpr qreal kMargin = 2 / 2.54 * kPixelsPerInch;
constexpr int kTextPixels = 15;

QFont TextFont() {
    QFont font("Liberation Serif");
    font.setPixelSize(kTextPixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void LayOut(QTextDocument& document, const std::string& html) {
    document.setMetaInformation(QTextDocument::CssMedia, "print");
    document.setDefaultFont(TextFont());
    document.setUseDesignMetrics(true);
    document.setHtml(QString::fromStdString(html));
    document.setPageSize(QPageSize::size(QPageSize::A4, QPageSize::Inch) * kPixelsPerInch);
    document.setDocumentMargin(kMargin);
}

void DrawPage(QPainter& painter, const QTextDocument& document, int page) {
    const QSizeF size = document.pageSize();
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(QPointF(0, page * size.height()), size);
    painter.save();
    painter.translate(0, -context.clip.top());
    painter.setClipRect(context.clip);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
    if (document.pageCount() > 1)
        painter.drawText(QRectF(0, size.height() - kMargin, size.width(), kMargin / 2), Qt::AlignCenter,
                         QString::number(page + 1));
}

std::string MakePdf(const std::string& html) {
    QTextDocument document;
    LayOut(document, html);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(kDotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    writer.setCreator("Lorebinder");
    QPainter painter(&writer);
    painter.scale(qreal{kDotsPerInch} / kPixelsPerInch, qreal{kDotsPerInch} / kPixelsPerInch);
    painter.setFont(document.defaultFont());
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        DrawPage(painter, document, page);
    }
    painter.end();
    return buffer.data().toStdString();
}

bool Told(const lore::FileResult& result, const char* what, const char* path) {
    if (!result.Ok())
        std::fprintf(stderr, "lorebinder-pdf: %s: %s: %s\n", what, path, result.Reason().c_str());
    return !result.Ok();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: lorebinder-pdf IN.html OUT.pdf\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false");  // no words about a desktop session that isn't needed
    const QGuiApplication application(argc, argv);
    std::string html;
    if (Told(lore::ReadFile(argv[1], html), "the page could not be read", argv[1]))
        return 1;
    if (Told(lore::WriteFileAtomically(argv[2], MakePdf(html)), "the PDF file could not be written", argv[2]))
        return 1;
    return 0;
}
