#include "rtf/font_pages.h"

namespace lore {

void FontPages::SetCharset(int font, int charset) {
    SetPage(font, charset == 0 && documentPage_ != kWesternPage ? kAnsi : CodePageOfCharset(charset, 0));
}

void FontPages::SetPage(int font, int page) {
    if (page > 0)
        namedPages_.insert(page);
    if (page != 0)
        pages_[font] = page;
    else
        pages_.erase(font);
}

int FontPages::PageOf(int font) const {
    const auto found = pages_.find(font);
    if (found == pages_.end())
        return documentPage_;
    return found->second == kAnsi ? AnsiPage() : found->second;
}

/// The page of fonts of the Western set. Writers that know no other set have it on all fonts and mean the document's
/// page, which no font of the table stands for then. Of Asian texts they don't, since office programs take the set as
/// it is.
int FontPages::AnsiPage() const {
    return namedPages_.contains(documentPage_) || IsMultiByte(documentPage_) ? kWesternPage : documentPage_;
}

}  // namespace lore
