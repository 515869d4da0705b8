#pragma once

#include <QImage>
#include <QSizeF>

#include "rtf/document.h"

namespace lore {

/// Decodes a picture of a rich text; null for one that can't be read, such as a metafile that holds no bitmap.
QImage DecodePicture(const Picture& picture);

/// The size at which a picture stands in the text, in pixels at 96 per inch without zoom. `image` may be null.
QSizeF PictureSize(const Picture& picture, const QImage& image);

}  // namespace lore
