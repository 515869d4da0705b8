#include "platform/pdf/paged_text.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace lore {

namespace {

constexpr int kDotsPerInch = 1200;
constexpr qreal kMarginMillimeters = 20;
constexpr int kTextPixels = 15;

QFont TextFont() {
    QFont font("Liberation Serif");
    font.setPixelSize(kTextPixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
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
    document_.setHtml(html);
    document_.setDocumentMargin(0);
    document_.setPageSize(room_.size());
}

void PagedText::DrawPage(QPainter& painter, int page, int dotsPerInch) const {
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.palette.setColor(QPalette::Link, QColor(5, 99, 193));
    context.clip = QRectF(QPointF(0, page * room_.height()), room_.size());
    const qreal scale = qreal(dotsPerInch) / kPixelsPerInch;
    painter.save();
    painter.scale(scale, scale);
    painter.save();
    painter.translate(room_.left(), room_.top() - context.clip.top());
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
