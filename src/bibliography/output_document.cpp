#include "bibliography/output_document.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"
#include "bibliography/output_links.h"

namespace lore {

namespace {

/// The character position of every byte position, the end included.
std::vector<uint32_t> CharacterPositions(std::string_view bytes) {
    const bool utf8 = IsValidUtf8(bytes);
    std::vector<uint32_t> positions(bytes.size() + 1);
    uint32_t character = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const bool continues = utf8 && IsContinuation(bytes[i]);
        positions[i] = continues ? character - 1 : character++;
    }
    positions.back() = character;
    return positions;
}

/// The spans of a source in characters of its citation.
std::vector<EmphasisRange> SpansOf(const CSource& source) {
    const std::vector<uint32_t> positions = CharacterPositions(source.FormattedText);
    const auto at = [&](int64_t byte) {
        return positions[static_cast<size_t>(std::clamp<int64_t>(byte, 0, static_cast<int64_t>(positions.size()) - 1))];
    };
    std::vector<EmphasisRange> spans;
    for (size_t i = 0; i < std::min(source.SpanStarts.Count(), source.SpanEnds.Count()); ++i) {
        const int32_t kind = i < source.SpanKinds.Count() ? source.SpanKinds[i] : static_cast<int32_t>(kItalic);
        spans.push_back({at(source.SpanStarts[i]), at(int64_t{source.SpanEnds[i]} + 1), kind});
    }
    return spans;
}

void Append(std::vector<EmphasisRange>& ranges, const EmphasisRange& range) {
    if (range.kind < kItalic || range.kind > kBoldItalicUnderline)
        return;
    if (!ranges.empty() && ranges.back().end == range.begin && ranges.back().kind == range.kind)
        ranges.back().end = range.end;
    else
        ranges.push_back(range);
}

/// The spans so that none lies over another: where several do, the first of the list holds.
std::vector<EmphasisRange> Apart(const std::vector<EmphasisRange>& spans) {
    std::vector<std::pair<size_t, size_t>> edges;  // a position, and the span that begins or ends there
    for (size_t i = 0; i < spans.size(); ++i) {
        if (spans[i].begin < spans[i].end) {
            edges.emplace_back(spans[i].begin, i);
            edges.emplace_back(spans[i].end, i);
        }
    }
    std::sort(edges.begin(), edges.end());
    std::vector<EmphasisRange> ranges;
    std::set<size_t> open;
    size_t from = 0;
    for (const auto& [position, span] : edges) {
        if (!open.empty() && position > from)
            Append(ranges, {from, position, spans[*open.begin()].kind});
        from = position;
        if (!open.insert(span).second)
            open.erase(span);
    }
    return ranges;
}

/// What a page can show: control characters are blanks, the two numbers that are no characters are replaced.
char32_t Shown(char32_t c) {
    if (c < 0x20 || (c >= 0x7F && c <= 0x9F))
        return U' ';
    return c == 0xFFFE || c == 0xFFFF ? char32_t{0xFFFD} : c;
}

bool IsRightToLeftLetter(char32_t c) {
    constexpr std::array<std::pair<char32_t, char32_t>, 5> kRanges = {
        {{0x0590, 0x08FF}, {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFE}, {0x10800, 0x10FFF}, {0x1E800, 0x1EFFF}}};
    return std::any_of(kRanges.begin(), kRanges.end(),
                       [c](const auto& range) { return c >= range.first && c <= range.second; });
}

bool IsRightToLeft(std::u32string_view text) {
    for (const char32_t c : text) {
        if (IsWordCharacter(c) && c != U'_' && (c < U'0' || c > U'9'))
            return IsRightToLeftLetter(c);
    }
    return false;
}

BibliographyEntry EntryOf(const CSource& source) {
    std::u32string text = ToCodePoints(source.FormattedText);
    std::transform(text.begin(), text.end(), text.begin(), Shown);
    const size_t begin = std::min(text.find_first_not_of(U' '), text.size());
    const size_t end = std::max(text.find_last_not_of(U' ') + 1, begin);
    text = text.substr(begin, end - begin);
    std::vector<EmphasisRange> spans = SpansOf(source);
    for (EmphasisRange& span : spans) {
        span.begin = std::clamp(span.begin, begin, end) - begin;
        span.end = std::clamp(span.end, begin, end) - begin;
    }
    return {CodePointsToUtf8(text), Apart(spans), std::clamp(source.IndentSpaces, 0, kMostIndentSpaces),
            IsRightToLeft(text)};
}

/// Whether a position lies in one of the ranges, `next` being the first that may hold it; `end` comes down to the next
/// place where that changes.
template <typename Range>
bool IsInside(const std::vector<Range>& ranges, size_t& next, size_t position, size_t& end) {
    while (next < ranges.size() && ranges[next].end <= position)
        ++next;
    if (next == ranges.size())
        return false;
    const bool inside = ranges[next].begin <= position;
    end = std::min(end, inside ? ranges[next].end : ranges[next].begin);
    return inside;
}

}  // namespace

BibliographyDocument MakeBibliographyDocument(const SourceList& formatted) {
    BibliographyDocument document;
    document.entries.reserve(formatted.Count());
    for (const CSource& source : formatted)
        document.entries.push_back(EntryOf(source));
    return document;
}

EmphasisLook LookOf(int32_t kind) {
    constexpr std::array<EmphasisLook, 8> kLooks = {{{false, false, false},
                                                     {false, true, false},
                                                     {true, false, false},
                                                     {false, false, true},
                                                     {true, false, true},
                                                     {true, true, false},
                                                     {false, true, true},
                                                     {true, true, true}}};
    return kLooks[kind >= kItalic && kind <= kBoldItalicUnderline ? static_cast<size_t>(kind) : 0];
}

std::vector<BibliographyPiece> PiecesOf(const BibliographyEntry& entry) {
    const std::u32string text = Utf8ToCodePoints(entry.text);
    const std::vector<LinkRange> links = FindLinks(text);
    std::vector<BibliographyPiece> pieces;
    size_t emphasis = 0;
    size_t link = 0;
    for (size_t at = 0, end = 0; at < text.size(); at = end) {
        end = text.size();
        BibliographyPiece piece;
        if (IsInside(entry.emphasis, emphasis, at, end))
            piece.kind = entry.emphasis[emphasis].kind;
        if (IsInside(links, link, at, end))
            piece.link = CodePointsToUtf8(
                std::u32string_view(text).substr(links[link].begin, links[link].end - links[link].begin));
        piece.text = CodePointsToUtf8(std::u32string_view(text).substr(at, end - at));
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

}  // namespace lore
