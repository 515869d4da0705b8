#pragma once

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextTable>

#include "rtf/document.h"
#include "rtf/list_marks.h"
#include "ui/board/rich_text_look.h"

namespace lore {

class Theme;

/// Turns the formats of a rich text into those of the screen.
class RichTextFormats {
public:
    RichTextFormats(const Document& document, const RichTextLook& look, const Theme& theme)
        : document_(document), look_(look), theme_(theme) {}

    /// `ground` is the colour of the table cell around the text, or that of the look.
    QTextCharFormat Characters(const CharFormat& format, const QColor& ground) const;
    QTextBlockFormat Paragraph(const ParagraphFormat& format) const;
    /// Edges and ground of a table cell.
    QTextTableCellFormat Cell(const CellFormat& format) const;
    /// Twips in pixels of the screen, zoomed.
    double Pixels(double twips) const { return twips / kTwipsPerPixel * look_.zoom; }

    static constexpr double kTwipsPerPixel = lore::kTwipsPerPixel;

private:
    QString FamilyOf(const CharFormat& format) const;

    const Document& document_;
    const RichTextLook& look_;
    const Theme& theme_;
};

/// Counts the items of the lists of one document.
class ListCounter {
public:
    /// The mark in front of the next item: "•", "3.", "c.", "iv."; empty for a paragraph that is none.
    QString NextMark(const ParagraphFormat& format);

private:
    ListMarks marks_;
};

}  // namespace lore
