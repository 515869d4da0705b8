#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "bibliography/source.h"

namespace lore {

/// The emphasis of a span. The numbers stand in files.
enum EmphasisKind : int32_t {
    kEmphasisNone = -1,
    kItalic = 1,
    kBold = 2,
    kUnderline = 3,
    kBoldUnderline = 4,
    kBoldItalic = 5,
    kItalicUnderline = 6,
    kBoldItalicUnderline = 7
};

/// The emphasis that the three flags of a field of a custom type give.
EmphasisKind FieldEmphasis(const CCustomSourceField& field);
/// Font weight on screen, 0 to 1000, of a kind; 480 for plain text.
int FontWeight(int32_t kind);

/// Appends a span for the first place of the slot's (the given) text in the citation; none for a text of one byte, or
/// one that isn't found. Texts are trimmed first.
void MarkField(CSource& source, size_t slot, int32_t kind, std::string_view citation);
void MarkText(CSource& source, std::string_view text, int32_t kind, std::string_view citation);
/// The kind of the first span that holds a byte position, -1 if none does.
int32_t EmphasisAt(const CSource& source, int32_t position);

/// A citation with line breaks: every line is followed by a line feed and the blanks of the hanging indent.
struct WrappedCitation {
    std::string text;
    int lines = 0;
    LongList spanStarts, spanEnds;  ///< the source's spans, moved by the indents as if each cut took one blank away
};

/// Breaks a text for a width in characters; 0 or less makes no breaks. A negative IndentSpaces becomes 0 in the source.
WrappedCitation WrapCitation(CSource& source, std::string_view text, int width);
/// The number of lines that WrapCitation makes of FormattedText.
int CountCitationLines(const CSource& source, int width);
/// Wraps FormattedText in place, as a window does with the copy that it draws. Gives the lines. Spans hold the letters
/// that they held, also where a cut takes no blank away, or several: there those of WrapCitation drift.
int WrapSource(CSource& source, int width);

}  // namespace lore
