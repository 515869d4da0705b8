#include "ui/editor/picture_object.h"

#include <QImage>
#include <QPainter>
#include <QTextDocument>
#include <QUrl>

namespace lore {

QSizeF PictureObject::ShownSize(const QTextDocument& text, const QTextImageFormat& format) {
    const QSizeF stored(format.width(), format.height());
    const double widest = text.textWidth() - 2 * text.documentMargin();
    return widest > 0 && stored.width() > widest ? QSizeF(widest, stored.height() * widest / stored.width()) : stored;
}

QSizeF PictureObject::intrinsicSize(QTextDocument* text, int /*position*/, const QTextFormat& format) {
    return ShownSize(*text, format.toImageFormat());
}

void PictureObject::drawObject(QPainter* painter, const QRectF& rect, QTextDocument* text, int /*position*/,
                               const QTextFormat& format) {
    const QUrl name(format.toImageFormat().name());
    const auto image = qvariant_cast<QImage>(text->resource(QTextDocument::ImageResource, name));
    if (image.isNull())
        return;
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(rect, image);
    painter->restore();
}

}  // namespace lore
