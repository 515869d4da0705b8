#pragma once

#include <QTextDocument>
#include <memory>

#include "rtf/document.h"
#include "ui/board/rich_text_look.h"

namespace lore {

class Theme;

/// A rich text for the screen. Sizes in points become pixels at 96 per inch times the zoom. Links are anchors; list
/// marks stand in the text, so that its positions aren't those of the document. The document paints automatic colours
/// with the palette that it gets.
std::unique_ptr<QTextDocument> ShowRichText(const Document& document, const RichTextLook& look, const Theme& theme);

}  // namespace lore
