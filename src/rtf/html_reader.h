#pragma once

#include <string>
#include <string_view>

#include "rtf/document.h"
#include "rtf/html_picture.h"

namespace lore {

/// How text without a look of its own looks.
struct HtmlLook {
    std::string font;  ///< UTF-8
    int halfPoints = 24;
    PictureConverter convert = {};  ///< may be empty
    bool alternatives = true;       ///< texts of pictures that can't be shown stand in their place
};

/// Reads a web page, or a piece of one, as a document: headings, paragraphs, lists, tables, links, characters and their
/// inline styles, and pictures that stand in the page itself. Scripts, style sheets, forms and remote pictures are left
/// out; a remote picture may show its alternative text. Bytes are read as PageForParser() reads them. Never fails; time
/// is linear in the input, elements nested deeper than 1,000 levels look like those of that level, and a page ends
/// where its paragraphs, cells, links and changes of look have made a megabyte of rich text, words not counted: no note
/// holds half of that.
Document ReadHtml(std::string_view bytes, const HtmlLook& look);

}  // namespace lore
