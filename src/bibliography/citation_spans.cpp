#include "bibliography/citation_spans.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "base/text.h"
#include "base/utf8.h"
#include "bibliography/citation_field.h"

namespace lore {

namespace {

/// The most blanks of all hanging indents in a wrapped text, when a damaged record asks for more.
constexpr size_t kMostBlanks = 50'000'000;

/// The byte position after so many characters, at most the end.
size_t SkipCharacters(std::string_view text, int64_t characters, bool utf8) {
    if (!utf8)
        return static_cast<size_t>(std::min<int64_t>(characters, static_cast<int64_t>(text.size())));
    size_t at = 0;
    for (; characters > 0 && at < text.size(); --characters) {
        ++at;
        while (at < text.size() && IsContinuation(text[at]))
            ++at;
    }
    return at;
}

/// The lines of a trimmed text. Only cuts at blanks make room for the indent, once.
std::vector<std::string_view> BreakLines(std::string_view text, int64_t width, int32_t indent) {
    std::vector<std::string_view> lines;
    const bool utf8 = IsValidUtf8(text);
    bool hasRoom = false;
    while (width > 0) {
        const size_t limit = SkipCharacters(text, width, utf8);
        if (limit == text.size())
            break;
        const size_t blank = text.rfind(' ', limit);
        if (blank == std::string_view::npos || blank == 0) {
            lines.push_back(text.substr(0, limit));
            text.remove_prefix(limit);
            continue;
        }
        const size_t cut = blank + 1 == text.size() ? blank : blank + 1;
        lines.push_back(TrimRight(text.substr(0, cut)));
        text = TrimLeft(text.substr(cut));
        width -= hasRoom ? 0 : indent;
        hasRoom = true;
    }
    if (!text.empty())
        lines.push_back(text);
    return lines;
}

/// Moves the ends of one span by the indents after the line feeds before them.
void MoveSpan(std::string_view text, int64_t indent, int64_t& start, int64_t& end) {
    for (size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) {
        const auto position = static_cast<int64_t>(at);
        if (position >= start && position > end)
            return;
        start += position < start ? indent : 0;
        end += indent;
    }
}

int32_t HoldTo32Bits(int64_t value) {
    return static_cast<int32_t>(std::min<int64_t>(value, std::numeric_limits<int32_t>::max()));
}

void MoveSpans(WrappedCitation& wrapped, int64_t indent) {
    if (wrapped.spanStarts.Count() != wrapped.spanEnds.Count())
        return;
    for (size_t i = 0; i < wrapped.spanStarts.Count(); ++i) {
        int64_t start = wrapped.spanStarts[i];
        int64_t end = wrapped.spanEnds[i];
        MoveSpan(wrapped.text, indent, start, end);
        wrapped.spanStarts.SetAt(i, HoldTo32Bits(start));
        wrapped.spanEnds.SetAt(i, HoldTo32Bits(end));
    }
}

/// The blanks of one hanging indent in a text of so many lines.
size_t IndentOf(const CSource& source, size_t lines) {
    return std::min(static_cast<size_t>(source.IndentSpaces), kMostBlanks / std::max<size_t>(lines, 1));
}

std::string JoinLines(const std::vector<std::string_view>& lines, size_t indent) {
    std::string text;
    for (const std::string_view line : lines)
        text.append(line).append("\n").append(indent, ' ');
    return text;
}

/// Where the bytes of a text stand once its lines are joined. Blanks at the ends of a line have gone.
class BytesInLines {
public:
    BytesInLines(std::string_view text, const std::vector<std::string_view>& lines, size_t indent) {
        int64_t joined = 0;
        for (const std::string_view line : lines) {
            const auto start = static_cast<int64_t>(line.data() - text.data());
            lines_.push_back({start, start + static_cast<int64_t>(line.size()), joined - start});
            joined += static_cast<int64_t>(line.size() + 1 + indent);
        }
    }
    /// The place of the first byte, from this one on, that is still there; behind all if there is none.
    int64_t From(int64_t byte) const {
        const auto line =
            std::partition_point(lines_.begin(), lines_.end(), [&](const Line& l) { return l.end <= byte; });
        return line == lines_.end() ? std::numeric_limits<int32_t>::max() : std::max(byte, line->start) + line->moved;
    }
    /// The place of the last byte, up to this one, that is still there; before all if there is none.
    int64_t UpTo(int64_t byte) const {
        auto line = std::partition_point(lines_.begin(), lines_.end(), [&](const Line& l) { return l.start <= byte; });
        if (line == lines_.begin())
            return -1;
        --line;
        return std::min(byte, line->end - 1) + line->moved;
    }

private:
    struct Line {
        int64_t start, end, moved;
    };
    std::vector<Line> lines_;
};

}  // namespace

EmphasisKind FieldEmphasis(const CCustomSourceField& field) {
    constexpr std::array<EmphasisKind, 8> kKinds = {
        kEmphasisNone, kItalic, kBold, kBoldItalic, kUnderline, kItalicUnderline, kBoldUnderline, kBoldItalicUnderline};
    return kKinds[(field.italics ? 1u : 0u) | (field.bold ? 2u : 0u) | (field.underline ? 4u : 0u)];
}

int FontWeight(int32_t kind) {
    constexpr std::array<int, 8> kWeights = {480, 540, 800, 460, 800, 800, 540, 800};
    return kWeights[kind >= kItalic && kind <= kBoldItalicUnderline ? static_cast<size_t>(kind) : 0];
}

void MarkText(CSource& source, std::string_view text, int32_t kind, std::string_view citation) {
    const std::string_view trimmed = Trim(text);
    const bool isLong = ByteOfCharacter(trimmed, 1) < trimmed.size();
    const size_t start = isLong ? citation.find(trimmed) : std::string_view::npos;
    if (start == std::string_view::npos)
        return;
    source.SpanKinds.AddTail(kind);
    source.SpanStarts.AddTail(static_cast<int32_t>(start));
    source.SpanEnds.AddTail(static_cast<int32_t>(start + trimmed.size() - 1));
}

void MarkField(CSource& source, size_t slot, int32_t kind, std::string_view citation) {
    MarkText(source, FieldText(source, slot), kind, citation);
}

int32_t EmphasisAt(const CSource& source, int32_t position) {
    const size_t count = std::min(source.SpanStarts.Count(), source.SpanEnds.Count());
    for (size_t i = 0; i < count; ++i) {
        if (source.SpanStarts[i] <= position && position <= source.SpanEnds[i])
            return i < source.SpanKinds.Count() ? source.SpanKinds[i] : kItalic;
    }
    return kEmphasisNone;
}

WrappedCitation WrapCitation(CSource& source, std::string_view text, int width) {
    source.IndentSpaces = std::max(source.IndentSpaces, 0);
    const std::vector<std::string_view> lines = BreakLines(Trim(text), width, source.IndentSpaces);
    WrappedCitation wrapped;
    wrapped.lines = static_cast<int>(lines.size());
    wrapped.spanStarts = source.SpanStarts;
    wrapped.spanEnds = source.SpanEnds;
    const size_t indent = IndentOf(source, lines.size());
    wrapped.text = JoinLines(lines, indent);
    MoveSpans(wrapped, static_cast<int64_t>(indent));
    return wrapped;
}

int CountCitationLines(const CSource& source, int width) {
    return static_cast<int>(BreakLines(Trim(source.FormattedText), width, std::max(source.IndentSpaces, 0)).size());
}

int WrapSource(CSource& source, int width) {
    source.IndentSpaces = std::max(source.IndentSpaces, 0);
    const std::vector<std::string_view> lines = BreakLines(Trim(source.FormattedText), width, source.IndentSpaces);
    const size_t indent = IndentOf(source, lines.size());
    const BytesInLines places(source.FormattedText, lines, indent);
    for (size_t i = 0; i < source.SpanStarts.Count(); ++i)
        source.SpanStarts.SetAt(i, HoldTo32Bits(places.From(source.SpanStarts[i])));
    for (size_t i = 0; i < source.SpanEnds.Count(); ++i)
        source.SpanEnds.SetAt(i, HoldTo32Bits(places.UpTo(source.SpanEnds[i])));
    const int count = static_cast<int>(lines.size());
    source.FormattedText = JoinLines(lines, indent);
    return count;
}

}  // namespace lore
