#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "bibliography/author_list.h"
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

/// Rebuilds the citation: FormattedText, AuthorText and the spans; slot 2 takes the date text for a standard type.
/// Ids of authors that the list doesn't know leave AuthorIDs, but the id right behind one that left isn't looked at
/// until the next call. A source type that is neither standard nor custom keeps its FormattedText.
void FormatSource(CSource& source, const AuthorList& authors);

/// The text of a slot, empty beyond the end of the list.
std::string_view FieldText(const CSource& source, size_t slot);
/// True if the slot isn't empty; a blank counts.
bool HasField(const CSource& source, size_t slot);
/// The slot's text between its neighbours, or nothing at all for an empty slot. With `ordinal` a bare number becomes
/// its ordinal.
std::string MakeField(const CSource& source, size_t slot, std::string_view before, std::string_view after1,
                      std::string_view after2 = {}, bool ordinal = false);
/// "1st", "12th", "103rd"; an empty text stays empty.
std::string MakeOrdinal(std::string_view text);
/// The date as citations show it: the date in a format (a year alone for YearOnly), or the text typed by hand.
std::string SourceDateText(const CSource& source, std::string_view fullFormat);

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
    LongList spanStarts, spanEnds;  ///< the source's spans, moved by the indents
};

/// Breaks a text for a width in characters; 0 or less makes no breaks. A negative IndentSpaces becomes 0 in the source.
WrappedCitation WrapCitation(CSource& source, std::string_view text, int width);
/// Wraps FormattedText in place, spans included, as a window does with the copy that it draws. Gives the lines.
int WrapSource(CSource& source, int width);

}  // namespace lore
