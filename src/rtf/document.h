#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/formats.h"

namespace lore {

// A rich text as plain values: one text, and beside it paragraphs and runs that say how its parts look. All positions
// are bytes in Document::text.

enum class RunKind : uint8_t {
    Text,
    Picture,    ///< no character in the text
    PageBreak,  ///< this and the next two: one line feed in the text
    ColumnBreak,
    SectionBreak,
};

/// A stretch of one paragraph with one look. A line feed in a run of kind Text is a line break within the paragraph.
struct TextRun {
    uint32_t begin = 0;
    uint32_t end = 0;
    CharFormat format;
    RunKind kind = RunKind::Text;
    int32_t picture = -1;  ///< index in Document::pictures for Picture, else -1
    bool operator==(const TextRun&) const = default;
};

/// What stands behind a paragraph in the text.
enum class ParagraphEnd : uint8_t {
    Paragraph,  ///< a line feed
    Cell,       ///< a tab: last paragraph of a table cell
    Row,        ///< a line feed: the (usually empty) end of a table row
    Document,   ///< nothing: the last paragraph
};

/// A paragraph, and its place in a table.
struct Paragraph {
    uint32_t begin = 0;
    uint32_t end = 0;       ///< without the character that ends the paragraph
    uint32_t firstRun = 0;  ///< its runs go on to the first run of the next paragraph
    int32_t row = -1;       ///< index in Document::rows, -1 outside tables
    int32_t cell = 0;       ///< column within the row, from 0
    ParagraphEnd endedBy = ParagraphEnd::Document;
    ParagraphFormat format;
    bool operator==(const Paragraph&) const = default;
};

/// A row of a table, whose cells its paragraphs name.
struct TableRow {
    uint32_t format = 0;  ///< index in Document::rowFormats
    uint8_t level = 1;    ///< above 1 for a table within a cell
    uint32_t first = 0;   ///< its first paragraph, that of a table within its first cell included
    bool operator==(const TableRow&) const = default;
};

enum class PictureKind : uint8_t { Png, Jpeg, Wmf, Emf, Dib };

/// A picture in the bytes and measures of the file, whatever they say.
struct Picture {
    PictureKind kind = PictureKind::Png;
    std::string bytes;
    int32_t width = 0;  ///< as the file states it: pixels, or 1/100 mm for Wmf
    int32_t height = 0;
    int32_t goalWidth = 0;  ///< twips before scaling, 0 if not given
    int32_t goalHeight = 0;
    int32_t scaleX = 100;  ///< per cent
    int32_t scaleY = 100;
    int32_t mapMode = 8;  ///< Wmf only
    std::string object;   ///< the object group that the picture stands for, as it stood; empty for a plain picture
    bool operator==(const Picture&) const = default;
};

/// An entry of the table of fonts.
struct DocumentFont {
    int32_t number = 0;  ///< its number in the file
    int32_t charset = 0;
    std::string name;  ///< UTF-8
    bool operator==(const DocumentFont&) const = default;
};

/// A group that the document has no place for (a header, a bookmark, hidden text), as it stood in the file.
struct KeptGroup {
    uint32_t position = 0;
    std::string rtf;
    bool operator==(const KeptGroup&) const = default;
};

/// A rich text without its markup. Runs and paragraphs stand in the order of the text and name the lists by index.
struct Document {
    std::string text;                   ///< UTF-8, what PlainText gives
    std::vector<Paragraph> paragraphs;  ///< never empty in a document that was read or built
    std::vector<TextRun> runs;
    std::vector<DocumentFont> fonts;
    std::vector<std::string> links;
    std::vector<Picture> pictures;
    std::vector<TableRow> rows;
    std::vector<RowFormat> rowFormats;
    std::vector<KeptGroup> kept;
    int32_t codePage = 1252;   ///< of the file, for kept groups
    int32_t defaultFont = -1;  ///< index in fonts
    bool operator==(const Document&) const = default;
};

/// The runs of a paragraph, and the characters of a run. The views look into the document.
std::span<const TextRun> RunsOf(const Document& document, size_t paragraph);
std::string_view TextOf(const Document& document, const TextRun& run);

/// A font's name as a table of fonts can hold it: without control characters, the semicolon that would end it (a comma
/// stands for it), and white space around it.
std::string CleanFontName(std::string_view name);

}  // namespace lore
