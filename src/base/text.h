#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lore {

// A string of the core is bytes, exactly as they stand in a file. A string whose bytes are valid UTF-8 as a whole is
// UTF-8; any other is Windows-1252, whose five holes stand for U+0081, U+008D, U+008F, U+0090 and U+009D.

bool IsValidUtf8(std::string_view bytes);

/// Bytes to Unicode, as UTF-8.
std::string ToUtf8(std::string_view bytes);
/// Unicode (valid UTF-8) to bytes: Windows-1252 when every character has a place there and the result would not read as
/// UTF-8 with multi-byte sequences, otherwise UTF-8. FromUtf8 and ToUtf8 lose nothing in either direction.
std::string FromUtf8(std::string_view utf8);

/// Bytes to code points.
std::u32string ToCodePoints(std::string_view bytes);
/// UTF-8 to code points (broken bytes become U+FFFD) and back (a surrogate or a number above U+10FFFF becomes U+FFFD).
std::u32string Utf8ToCodePoints(std::string_view utf8);
std::string CodePointsToUtf8(std::u32string_view text);
void AppendUtf8(std::string& utf8, char32_t c);

/// The character of a Windows-1252 byte.
char32_t FromWindows1252(unsigned char byte);

/// Lower case and upper case for all letters of the character set; the form of the bytes stays UTF-8 or Windows-1252.
std::string ToLower(std::string_view bytes);
std::string ToUpper(std::string_view bytes);

/// Below 0, 0 or above 0: the order of the lower-cased bytes.
int CompareNoCase(std::string_view a, std::string_view b);
/// The same characters, whatever the form of their bytes; EqualNoCase without regard to case.
bool IsSameText(std::string_view a, std::string_view b);
bool EqualNoCase(std::string_view a, std::string_view b);

/// Without white space (blank, tab, line feed, vertical tab, form feed, carriage return) at both ends, at the left, at
/// the right. The views look into `text`.
std::string_view Trim(std::string_view text);
std::string_view TrimLeft(std::string_view text);
std::string_view TrimRight(std::string_view text);

/// Takes the first line off the front of a text, with its line feed, and gives it without.
std::string_view TakeLine(std::string_view& text);

/// The number of characters of a string of bytes, and the byte position of a character (the length if beyond the end).
size_t CharacterCount(std::string_view bytes);
size_t ByteOfCharacter(std::string_view bytes, size_t character);
/// The character position of a byte position: how many characters begin before it.
size_t CharacterOfByte(std::string_view bytes, size_t byte);

/// The lower case and the upper case of one character, by simple mapping.
char32_t LowerCharacter(char32_t c);
char32_t UpperCharacter(char32_t c);
/// Simple case folding of one character, the form in which searches compare.
char32_t FoldCase(char32_t c);
/// A letter, a digit, a combining mark or "_": what may not stand beside a whole word.
bool IsWordCharacter(char32_t c);

/// A number as C's atol gives it, held to the limits of 32 bits: white space, a sign, digits; 0 without digits.
int ParseInt(std::string_view text);
/// A number as C's atof gives it for decimal texts, with "." as the point whatever the locale.
double ParseDouble(std::string_view text);

/// The last component of a stored path, which may use "/" or "\".
std::string_view LastPathComponent(std::string_view path);
/// What stands behind the last point of the last component, without the point; empty if there is none.
std::string_view FileExtension(std::string_view path);

/// Text from an edit field, a paste, a file or a command line, without the bytes 0x00 and 0x1A that would cut a record.
std::string CleanText(std::string_view bytes);

/// Replaces every occurrence of `from`, which must not be empty.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace lore
