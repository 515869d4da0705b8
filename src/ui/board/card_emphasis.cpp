#include "ui/board/card_emphasis.h"

#include "base/text.h"
#include "bibliography/citation_spans.h"

namespace lore {

namespace {

constexpr size_t kLongestEmphasized = 20000;  // bytes of a citation whose emphasis is looked up
constexpr size_t kMostSpans = 200;

QTextCharFormat FormatOf(int32_t kind) {
    QTextCharFormat format;
    format.setFontWeight(FontWeight(kind));
    format.setFontItalic(kind == kItalic || kind == kBoldItalic || kind == kItalicUnderline ||
                         kind == kBoldItalicUnderline);
    format.setFontUnderline(kind == kUnderline || kind == kBoldUnderline || kind == kItalicUnderline ||
                            kind == kBoldItalicUnderline);
    return format;
}

}  // namespace

// Spans count bytes, a layout counts the code units of its text.
QList<QTextLayout::FormatRange> CitationEmphasis(const CSource& source) {
    const std::string& text = source.FormattedText;
    QList<QTextLayout::FormatRange> ranges;
    if (text.size() > kLongestEmphasized || source.SpanKinds.Count() == 0 || source.SpanKinds.Count() > kMostSpans)
        return ranges;
    const bool utf8 = IsValidUtf8(text);
    int position = 0, begin = 0;
    int32_t kind = kEmphasisNone;
    const auto close = [&](int32_t next) {
        if (kind != kEmphasisNone && position > begin)
            ranges.append({begin, position - begin, FormatOf(kind)});
        kind = next;
        begin = position;
    };
    for (size_t byte = 0; byte < text.size(); ++byte) {
        const auto value = static_cast<unsigned char>(text[byte]);
        if (utf8 && (value & 0xc0u) == 0x80u)
            continue;
        if (const int32_t here = EmphasisAt(source, static_cast<int32_t>(byte)); here != kind)
            close(here);
        position += utf8 && value >= 0xf0 ? 2 : 1;
    }
    close(kEmphasisNone);
    return ranges;
}

}  // namespace lore
