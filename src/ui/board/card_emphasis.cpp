#include "ui/board/card_emphasis.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "base/text.h"
#include "bibliography/citation_spans.h"

namespace lore {

namespace {

constexpr size_t kMostSpans = 1000;  // more are plain: a type of a source has one for each of its fields

QTextCharFormat FormatOf(int32_t kind) {
    QTextCharFormat format;
    format.setFontWeight(FontWeight(kind));
    format.setFontItalic(kind == kItalic || kind == kBoldItalic || kind == kItalicUnderline ||
                         kind == kBoldItalicUnderline);
    format.setFontUnderline(kind == kUnderline || kind == kBoldUnderline || kind == kItalicUnderline ||
                            kind == kBoldItalicUnderline);
    return format;
}

/// The bytes at which the emphasis may change, upwards.
std::vector<int32_t> BoundsOf(const CSource& source) {
    std::vector<int32_t> bounds;
    const size_t spans = std::min(source.SpanStarts.Count(), source.SpanEnds.Count());
    for (size_t i = 0; i < spans; ++i) {
        bounds.push_back(source.SpanStarts[i]);
        if (source.SpanEnds[i] < std::numeric_limits<int32_t>::max())
            bounds.push_back(source.SpanEnds[i] + 1);
    }
    std::sort(bounds.begin(), bounds.end());
    return bounds;
}

}  // namespace

// Spans count bytes, a layout counts the code units of its text.
QList<QTextLayout::FormatRange> CitationEmphasis(const CSource& source) {
    const std::string& text = source.FormattedText;
    QList<QTextLayout::FormatRange> ranges;
    if (source.SpanStarts.Count() > kMostSpans)
        return ranges;
    const std::vector<int32_t> bounds = BoundsOf(source);
    if (bounds.empty())
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
    auto bound = bounds.begin();
    for (size_t byte = 0; byte < text.size() && (bound != bounds.end() || kind != kEmphasisNone); ++byte) {
        const auto value = static_cast<unsigned char>(text[byte]);
        if (utf8 && (value & 0xc0u) == 0x80u)
            continue;
        const auto next = std::upper_bound(bound, bounds.end(), static_cast<int32_t>(byte));
        if (std::exchange(bound, next) != next)
            if (const int32_t here = EmphasisAt(source, static_cast<int32_t>(byte)); here != kind)
                close(here);
        position += utf8 && value >= 0xf0 ? 2 : 1;
    }
    close(kEmphasisNone);
    return ranges;
}

}  // namespace lore
