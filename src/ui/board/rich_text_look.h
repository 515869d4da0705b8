#pragma once

#include <QColor>

namespace lore {

/// How a rich text is shown.
struct RichTextLook {
    QColor ground;          ///< what stands behind the text; colours of the text are made legible on it
    double zoom = 1.0;      ///< scales fonts, indents and pictures
    int dotsPerInch = 96;   ///< logical resolution of the device that paints
    int widestPicture = 0;  ///< pixels; wider pictures are scaled down
};

}  // namespace lore
