#pragma once

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextTableCellFormat>
#include <QUuid>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "rtf/document.h"
#include "rtf/table_grid.h"
#include "ui/board/rich_text_formats.h"
#include "ui/board/rich_text_look.h"

class QTextDocument;

namespace lore {

/// What formats of the screen remember of the document's own ones.
enum NoteProperty {
    kCharsProperty = QTextFormat::UserProperty + 1,  ///< number of a CharFormat
    kParagraphProperty,                              ///< number of a ParagraphFormat
    kPictureProperty,                                ///< number of a picture
    kKeptProperty,                                   ///< number of a kept group
    kBreakProperty,                                  ///< RunKind of the line separators
    kTableProperty,                                  ///< number of a NoteTable
    kCellProperty,                                   ///< edges and ground of a cell, packed
    kFlatProperty,                                   ///< level and end of a paragraph of a table without a grid
    kFlatRowProperty,                                ///< number of its RowFormat
    kPhantomProperty,                                ///< the empty block that stands before each table
    kPartProperty,                                   ///< of a table: see table_fit.h
};

/// The character that stands for a kept group: an object without width.
inline constexpr int kKeptObject = QTextFormat::UserObject + 1;

/// A row of a table as it was read, beyond what a table of the screen holds.
struct NoteTableRow {
    std::shared_ptr<const RowFormat> format;
    std::vector<TableCell> cells;
    std::vector<ParagraphFormat> covered;  ///< of each cell; of use for those that are covered
    ParagraphFormat end;
    std::vector<std::shared_ptr<const std::string>> kept;  ///< groups that stand at the end of the row
};
/// A table as it was read, so that it is written again as it stood.
struct NoteTable {
    std::vector<NoteTableRow> rows;
    int columns = 0;
};

/// All formats that one text of the editor has had. Formats of the screen name them by number, so that nothing is lost
/// on the way to the screen and back, undone steps included; numbers stay until the next Reset.
class NoteFormats {
public:
    explicit NoteFormats(const Theme& theme) : theme_(theme) {}

    /// Begins a new text with the fonts and links of a document.
    void Reset(const Document& document);
    /// Tells the text from all others; each Reset gives another.
    const QUuid& Mark() const { return mark_; }
    void SetLook(const RichTextLook& look) { look_ = look; }
    const RichTextLook& Look() const { return look_; }
    const Theme& GetTheme() const { return theme_; }
    /// Fonts, links and numbers of the text; no text.
    const Document& Tables() const { return tables_; }

    int32_t Font(const std::string& name);
    int32_t Link(const std::string& target);
    std::string FontName(const CharFormat& format) const;
    std::string LinkTarget(const CharFormat& format) const;
    /// A format of another document in the numbers of this text.
    CharFormat Imported(const CharFormat& format, const Document& from);

    QTextCharFormat Shown(const CharFormat& format, const QColor& ground);
    QTextBlockFormat Shown(const ParagraphFormat& format);
    QTextTableCellFormat Shown(const CellFormat& format);
    RichTextFormats Screen() const { return RichTextFormats(tables_, look_, theme_); }

    /// What a format of the screen stands for: edges and ground alone for a cell; the default for one that remembers
    /// nothing.
    CharFormat Characters(const QTextFormat& shown) const;
    ParagraphFormat Paragraph(const QTextFormat& shown) const;
    CellFormat Cell(const QTextFormat& shown) const;
    /// An id that no list of a text of the screen has.
    int32_t NewListId(const QTextDocument& shown) const;
    /// How text looks that nothing else says a look for.
    CharFormat Default();
    void SetDefault(const std::string& font, int halfPoints);

    int AddPicture(std::shared_ptr<const Picture> picture);
    int AddKept(std::shared_ptr<const std::string> rtf);
    int AddTable(std::shared_ptr<const NoteTable> table);
    int AddRow(std::shared_ptr<const RowFormat> row);
    std::shared_ptr<const Picture> PictureOf(const QTextFormat& shown) const;
    std::shared_ptr<const std::string> KeptOf(const QTextFormat& shown) const;
    std::shared_ptr<const NoteTable> TableOf(const QTextFormat& shown) const;
    std::shared_ptr<const RowFormat> RowOf(const QTextFormat& shown) const;

private:
    const Theme& theme_;
    RichTextLook look_;
    Document tables_;
    QUuid mark_ = QUuid::createUuid();
    CharFormat default_;
    std::string defaultFont_;
    std::map<CharFormat, int> characterNumbers_;
    std::vector<CharFormat> characters_;
    std::unordered_map<std::string, int> paragraphNumbers_;  ///< by all fields in a row
    std::vector<ParagraphFormat> paragraphs_;
    std::unordered_map<std::string, int32_t> fontNumbers_;
    std::unordered_map<std::string, int32_t> linkNumbers_;
    std::vector<std::shared_ptr<const Picture>> pictures_;
    std::vector<std::shared_ptr<const std::string>> kept_;
    std::vector<std::shared_ptr<const NoteTable>> tableRows_;
    std::vector<std::shared_ptr<const RowFormat>> rows_;
};

}  // namespace lore
