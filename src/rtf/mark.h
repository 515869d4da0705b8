#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/document.h"

namespace lore {

/// Characters (code points) of a plain text, the end exclusive.
struct TextRange {
    size_t begin = 0;
    size_t end = 0;
    bool operator==(const TextRange&) const = default;
};

/// The background colour of search hits.
inline constexpr TextColor kSearchMark{255, 142, 40};

/// Sets the background colour of ranges of Document::text. Ranges may overlap and may stand in any order; what lies
/// beyond the text is passed over.
void SetBackground(Document& document, std::vector<TextRange> ranges, TextColor color);

/// The RTF with a background colour on ranges of its plain text (as PlainText gives it). Everything else stays byte for
/// byte as it stood, also what a Document can't hold: the marks are groups put around the characters. Only a file that
/// takes no such groups (as when its colour table stands behind the text) is written anew from its document.
std::string MarkRtf(std::string_view rtf, std::vector<TextRange> ranges, TextColor color = kSearchMark);

}  // namespace lore
