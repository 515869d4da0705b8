#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <optional>

#include "rtf/document.h"

namespace lore {

inline constexpr int kLongestPictureSide = 1600;  ///< pixels; larger pictures are scaled down when they come in

/// A picture for the text from the bytes of an image file. PNG and JPEG stay as they are, others become PNG; one with a
/// longer side than kLongestPictureSide is scaled down. It stands at most `widest` pixels wide. Nothing for bytes that
/// are no image.
std::optional<Picture> PictureFromBytes(const QByteArray& bytes, int widest);
std::optional<Picture> PictureFromImage(const QImage& image, int widest);

/// A picture of a pasted text by the same rules: scaled down if it is too large, and shown at most `widest` pixels
/// wide. What isn't PNG or JPEG stays as it is.
Picture Bounded(const Picture& picture, int widest);

/// The same picture at another size, in pixels at 96 per inch.
Picture Resized(const Picture& picture, const QSizeF& size);

}  // namespace lore
