#include "ui/board/card_text.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintDevice>
#include <QTextDocument>
#include <cmath>

#include "base/text.h"
#include "rtf/rtf.h"
#include "ui/board/rich_text_view.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr char kPlainFont[] = "Times New Roman";
constexpr int kPlainHalfPoints = 27;  // what a new note's text has

class TextBlock : public CardBlock {
public:
    TextBlock(const CNote& note, int width, const CardContext& context) {
        const std::string& rtf = note.displayRtf.empty() ? note.rtfText : note.displayRtf;
        RichTextLook look;
        look.ground = context.textGround;
        look.zoom = context.Zoom();
        look.dotsPerInch = context.device ? context.device->logicalDpiY() : look.dotsPerInch;
        look.widestPicture = width;
        const Document document =
            rtf.empty() ? DocumentFromText(ToUtf8(note.plainText), kPlainFont, kPlainHalfPoints) : ReadRtf(rtf);
        shown_ = ShowRichText(document, look, context.theme);
        shown_->documentLayout()->setPaintDevice(context.device);
        shown_->setTextWidth(width);
        text_ = Legible(context.theme.Color(ColorRole::Text), context.textGround);
        height_ = static_cast<int>(std::ceil(shown_->size().height()));
    }

    int Height() const override { return height_; }

    void Paint(QPainter& painter, const CardPaint& paint) const override {
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = paint.clip;
        context.palette.setColor(QPalette::Text, text_);
        painter.setClipRect(paint.clip, Qt::IntersectClip);
        shown_->documentLayout()->draw(&painter, context);
    }

    CardHit HitTest(const QPointF& point) const override {
        const QString address = shown_->documentLayout()->anchorAt(point);
        return address.isEmpty() ? CardHit() : CardHit{CardHit::TextLink, -1, address};
    }

private:
    std::unique_ptr<QTextDocument> shown_;
    QColor text_;
    int height_ = 0;
};

}  // namespace

std::unique_ptr<CardBlock> MakeTextBlock(const CNote& note, int width, const CardContext& context) {
    return std::make_unique<TextBlock>(note, width, context);
}

}  // namespace lore
