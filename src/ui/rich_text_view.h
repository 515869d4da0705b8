#pragma once

#include <QColor>
#include <QTextDocument>
#include <memory>

#include "rtf/document.h"

namespace lore {

class Theme;

/// How a rich text is shown.
struct RichTextLook {
    QColor ground;          ///< what stands behind the text; colours of the text are made legible on it
    double zoom = 1.0;      ///< scales fonts, indents and pictures
    int dotsPerInch = 96;   ///< logical resolution of the device that paints
    int widestPicture = 0;  ///< pixels; wider pictures are scaled down
};

/// A rich text for the screen. Sizes in points become pixels at 96 per inch times the zoom. Links are anchors; list
/// marks stand in the text, so that its positions aren't those of the document. The document paints automatic colours
/// with the palette that it gets.
std::unique_ptr<QTextDocument> ShowRichText(const Document& document, const RichTextLook& look, const Theme& theme);

}  // namespace lore
