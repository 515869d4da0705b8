#include "ui/editor/picture_import.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>

#include "ui/board/rich_text_formats.h"
#include "ui/board/rich_text_pictures.h"

namespace lore {
namespace {

constexpr int kJpegQuality = 88;
constexpr int kDecodeLimitMegabytes = 512;

QByteArray Encoded(const QImage& image, PictureKind kind) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, kind == PictureKind::Jpeg ? "JPEG" : "PNG", kind == PictureKind::Jpeg ? kJpegQuality : -1);
    return bytes;
}

Picture Made(const QByteArray& bytes, PictureKind kind, const QSize& pixels, int widest) {
    Picture picture;
    picture.kind = kind;
    picture.bytes = bytes.toStdString();
    picture.width = pixels.width();
    picture.height = pixels.height();
    const double shrink = widest > 0 && pixels.width() > widest ? double(widest) / pixels.width() : 1.0;
    return Resized(picture, QSizeF(pixels) * shrink);
}

QImage BoundedImage(const QImage& image) {
    return std::max(image.width(), image.height()) > kLongestPictureSide
               ? image.scaled(kLongestPictureSide, kLongestPictureSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)
               : image;
}

}  // namespace

Picture Resized(const Picture& picture, const QSizeF& size) {
    Picture resized = picture;
    resized.goalWidth = std::max(1, qRound(size.width() * RichTextFormats::kTwipsPerPixel));
    resized.goalHeight = std::max(1, qRound(size.height() * RichTextFormats::kTwipsPerPixel));
    resized.scaleX = resized.scaleY = 100;
    return resized;
}

Picture Bounded(const Picture& picture, int widest) {
    const bool isPixels = picture.kind == PictureKind::Png || picture.kind == PictureKind::Jpeg;
    if (!isPixels || !picture.object.empty())
        return picture;
    QBuffer buffer;
    buffer.setData(QByteArray::fromRawData(picture.bytes.data(), static_cast<qsizetype>(picture.bytes.size())));
    const QSize pixels = QImageReader(&buffer).size();
    if (!pixels.isValid())
        return picture;
    Picture bounded = picture;
    Picture sized = picture;
    sized.width = pixels.width();
    sized.height = pixels.height();
    const QSizeF shown = PictureSize(sized, QImage());
    if (std::max(pixels.width(), pixels.height()) > kLongestPictureSide) {
        if (std::optional<Picture> smaller = PictureFromBytes(buffer.data(), 0)) {
            bounded = std::move(*smaller);
            bounded = Resized(bounded, shown);
        }
    }
    return widest > 0 && shown.width() > widest ? Resized(bounded, shown * (widest / shown.width())) : bounded;
}

std::optional<Picture> PictureFromImage(const QImage& image, int widest) {
    if (image.isNull())
        return std::nullopt;
    const QImage bounded = BoundedImage(image);
    return Made(Encoded(bounded, PictureKind::Png), PictureKind::Png, bounded.size(), widest);
}

std::optional<Picture> PictureFromBytes(const QByteArray& bytes, int widest) {
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAllocationLimit(kDecodeLimitMegabytes);
    const QByteArray format = reader.format();
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull())
        return std::nullopt;
    const bool isJpeg = format == "jpeg" || format == "jpg";
    const bool turned = reader.transformation() != QImageIOHandler::TransformationNone;
    const QImage bounded = BoundedImage(image);
    const PictureKind kind = isJpeg ? PictureKind::Jpeg : PictureKind::Png;
    const bool stays = bounded.size() == image.size() && !turned && (isJpeg || format == "png");
    return Made(stays ? bytes : Encoded(bounded, kind), kind, bounded.size(), widest);
}

}  // namespace lore
