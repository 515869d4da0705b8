#pragma once

#include <unordered_map>
#include <unordered_set>

#include "rtf/code_page.h"

namespace lore {

/// The code page of a document, and those that its table names for fonts.
class FontPages {
public:
    void SetDocumentPage(int page) { documentPage_ = page; }
    int DocumentPage() const { return documentPage_; }
    /// What the table says of a font: its charset, or its page, where 0 is that of the document.
    void SetCharset(int font, int charset);
    void SetPage(int font, int page);
    /// The page of the bytes in a font.
    int PageOf(int font) const;

private:
    int AnsiPage() const;

    static constexpr int kAnsi = -1;  // as the page of a font: what AnsiPage() says

    int documentPage_ = kWesternPage;
    std::unordered_map<int, int> pages_;  // of fonts whose page isn't that of the document
    std::unordered_set<int> namedPages_;  // those of all fonts of the table
};

}  // namespace lore
