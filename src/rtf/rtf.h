#pragma once

#include <string>
#include <string_view>

#include "rtf/document.h"

namespace lore {

/// Reads rich text as office programs and rich text controls write it. Never fails: what isn't RTF gives a document
/// without text, and one that breaks off keeps what was read. Time is linear in the input; groups deeper than 1,000
/// levels share the state of that level; input beyond 1 GiB isn't read.
Document ReadRtf(std::string_view rtf);

/// The characters that ReadRtf puts into Document::text, without building a document. Paragraphs are parted by one
/// line feed, none stands after the last; a cell ends with a tab, a table row and a break with a line feed. Footnotes,
/// comments, text boxes and texts of objects stand at their place, " [in brackets]", with a line feed between their
/// paragraphs. Bytes of Symbol and its like are their signs. No field instructions, hidden or deleted text, headers,
/// list marks or pictures.
std::string PlainText(std::string_view rtf);

/// The same into `text`, whose room is used again: for many texts in a row.
void PlainText(std::string_view rtf, std::string& text);

/// RTF as it comes from a file or a clipboard, for a record: without the bytes that would cut one (see CleanText). Data
/// of \bin, which may hold such bytes and are counted, become hex digits.
std::string CleanRtf(std::string_view bytes);

/// The text as the edit control gives it: "\r\n" for each line feed.
std::string WithCrLf(std::string_view plainText);

/// ASCII, lines ended by "\r\n", fonts and colours in tables, all text as \'xx-free \uN beyond ASCII. ReadRtf of the
/// result gives the document again.
std::string WriteRtf(const Document& document);

/// A document of plain text, "\n" or "\r\n" between paragraphs, in one font.
Document DocumentFromText(std::string_view utf8, std::string_view font, int halfPoints);

}  // namespace lore
