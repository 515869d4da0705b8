#include "ui/board/rich_text_pictures.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>
#include <cstring>

#include "ui/board/rich_text_formats.h"

namespace lore {
namespace {

constexpr int kBitmapFileHeader = 14;
constexpr uint32_t kBitmapInfoHeader = 40;
constexpr double kMillimetreHundredthsPerPixel = 2540.0 / 96.0;
constexpr double kPictureLimit = 20000;  // pixels that a stated side may have

template <typename T>
T At(const std::string& bytes, size_t position) {
    return position + sizeof(T) <= bytes.size() ? qFromLittleEndian<T>(bytes.data() + position) : T{};
}

QImage Decode(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    return reader.read();
}

// A device-independent bitmap is a bitmap file without the header that says where its pixels begin.
QImage DecodeDib(const std::string& dib) {
    const auto header = At<uint32_t>(dib, 0);
    if (header < kBitmapInfoHeader || header > dib.size())
        return {};
    const auto depth = At<uint16_t>(dib, 14);
    const auto compression = At<uint32_t>(dib, 16);
    const auto used = At<uint32_t>(dib, 32);
    const uint32_t colors = depth > 8 ? used : (used != 0 ? used : 1u << depth);
    const uint32_t masks = compression == 3 && header == kBitmapInfoHeader ? 12 : 0;
    QByteArray file("BM", 2);
    file.resize(kBitmapFileHeader);
    const size_t total = kBitmapFileHeader + dib.size();
    qToLittleEndian<uint32_t>(static_cast<uint32_t>(total), file.data() + 2);
    qToLittleEndian<uint32_t>(0, file.data() + 6);
    qToLittleEndian<uint32_t>(kBitmapFileHeader + header + masks + colors * 4, file.data() + 10);
    file.append(dib.data(), static_cast<qsizetype>(dib.size()));
    return Decode(file);
}

// Rich text controls put bitmaps into a metafile of a single drawing record; the bitmap stands at its end.
QImage DecodeMetafile(const std::string& wmf) {
    constexpr uint16_t kStretchDib = 0x0f43, kDibStretchBlt = 0x0b41, kDibBitBlt = 0x0940;
    size_t at = At<uint32_t>(wmf, 0) == 0x9ac6cdd7u ? 22 : 0;
    at += size_t{2} * At<uint16_t>(wmf, at + 2);
    while (at + 6 <= wmf.size()) {
        const size_t size = size_t{2} * At<uint32_t>(wmf, at);
        const auto function = At<uint16_t>(wmf, at + 4);
        size_t parameters = 0;
        if (function == kStretchDib)
            parameters = 22;
        else if (function == kDibStretchBlt)
            parameters = 20;
        else if (function == kDibBitBlt)
            parameters = 16;
        if (parameters != 0 && size > 6 + parameters && size <= wmf.size() - at)
            return DecodeDib(wmf.substr(at + 6 + parameters, size - 6 - parameters));
        if (size < 6)
            break;
        at += size;
    }
    return {};
}

}  // namespace

QImage DecodePicture(const Picture& picture) {
    switch (picture.kind) {
        case PictureKind::Png:
        case PictureKind::Jpeg:
            return Decode(QByteArray::fromRawData(picture.bytes.data(), static_cast<qsizetype>(picture.bytes.size())));
        case PictureKind::Dib:
            return DecodeDib(picture.bytes);
        case PictureKind::Wmf:
            return DecodeMetafile(picture.bytes);
        case PictureKind::Emf:
            return {};
    }
    return {};
}

QSizeF PictureSize(const Picture& picture, const QImage& image) {
    const bool metric = picture.kind == PictureKind::Wmf || picture.kind == PictureKind::Emf;
    const auto side = [metric](int32_t goal, int32_t stated, int32_t scale, int pixels) {
        double length = pixels;
        if (goal > 0)
            length = goal / RichTextFormats::kTwipsPerPixel;
        else if (stated > 0)
            length = metric ? stated / kMillimetreHundredthsPerPixel : stated;
        return std::clamp(length * (scale > 0 ? scale : 100) / 100.0, 1.0, kPictureLimit);
    };
    return QSizeF(side(picture.goalWidth, picture.width, picture.scaleX, image.width()),
                  side(picture.goalHeight, picture.height, picture.scaleY, image.height()));
}

}  // namespace lore
