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
    kText,
    kPicture,    ///< no character in the text
    kPageBreak,  ///< this and the next two: one line feed in the text
    kColumnBreak,
    kSectionBreak,
};

/// A stretch of one paragraph with one look. A line feed in a run of kind kText is a line break within the paragraph.
struct TextRun {
    uint32_t begin = 0;
    uint32_t end = 0;
    CharFormat format;
    RunKind kind = RunKind::kText;
    int32_t picture = -1;  ///< index in Document::pictures for kPicture, else -1
    bool operator==(const TextRun&) const = default;
};

/// What stands behind a paragraph in the text.
enum class ParagraphEnd : uint8_t {
    kParagraph,  ///< a line feed
    kCell,       ///< a tab: last paragraph of a table cell
    kRow,        ///< a line feed: the (usually empty) end of a table row
    kDocument,   ///< nothing: the last paragraph
};

struct Paragraph {
    uint32_t begin = 0;
    uint32_t end = 0;        ///< without the character that ends the paragraph
    uint32_t first_run = 0;  ///< its runs go on to the first run of the next paragraph
    int32_t row = -1;        ///< index in Document::rows, -1 outside tables
    int32_t cell = 0;        ///< column within the row, from 0
    ParagraphEnd ended_by = ParagraphEnd::kDocument;
    ParagraphFormat format;
    bool operator==(const Paragraph&) const = default;
};

struct TableRow {
    uint32_t format = 0;  ///< index in Document::row_formats
    uint8_t level = 1;    ///< above 1 for a table within a cell
    uint32_t first = 0;   ///< its first paragraph, that of a table within its first cell included
    bool operator==(const TableRow&) const = default;
};

enum class PictureKind : uint8_t { kPng, kJpeg, kWmf, kEmf, kDib };

struct Picture {
    PictureKind kind = PictureKind::kPng;
    std::string bytes;
    int32_t width = 0;  ///< as the file states it: pixels, or 1/100 mm for kWmf
    int32_t height = 0;
    int32_t goal_width = 0;  ///< twips before scaling, 0 if not given
    int32_t goal_height = 0;
    int32_t scale_x = 100;  ///< per cent
    int32_t scale_y = 100;
    int32_t map_mode = 8;  ///< kWmf only
    std::string object;    ///< the object group that the picture stands for, as it stood; empty for a plain picture
    bool operator==(const Picture&) const = default;
};

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

struct Document {
    std::string text;                   ///< UTF-8, what PlainText gives
    std::vector<Paragraph> paragraphs;  ///< never empty in a document that was read or built
    std::vector<TextRun> runs;
    std::vector<DocumentFont> fonts;
    std::vector<std::string> links;
    std::vector<Picture> pictures;
    std::vector<TableRow> rows;
    std::vector<RowFormat> row_formats;
    std::vector<KeptGroup> kept;
    int32_t code_page = 1252;   ///< of the file, for kept groups
    int32_t default_font = -1;  ///< index in fonts
    bool operator==(const Document&) const = default;
};

/// The runs of a paragraph, and the characters of a run. The views look into the document.
std::span<const TextRun> RunsOf(const Document& document, size_t paragraph);
std::string_view TextOf(const Document& document, const TextRun& run);

/// A font's name as a table of fonts can hold it: without control characters, the semicolon that would end it (a comma
/// stands for it), and white space around it.
std::string CleanFontName(std::string_view name);

}  // namespace lore
