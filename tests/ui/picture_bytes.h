#pragma once

#include <QBuffer>
#include <QImage>

namespace lore {

/// The bytes of a picture file.
inline QByteArray Encoded(const QImage& image, const char* form = "PNG") {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, form);
    return bytes;
}

/// A picture of one color.
inline QImage Filled(int width, int height, const QColor& color = QColor(40, 110, 160)) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

}  // namespace lore
