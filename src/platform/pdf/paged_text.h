#pragma once

#include <QPageLayout>
#include <QTextDocument>
#include <string>

class QPainter;

namespace lore {

/// A page of HTML laid out on paper, as PDF files, the printer and the preview show it. It is laid out in pixels of the
/// screen, the unit of its indents, and drawn larger: a layout for the paper itself would take those pixels as dots.
class PagedText {
public:
    static constexpr int kPixelsPerInch = 96;

    /// `paper` says the size, the direction and the margins.
    PagedText(const QString& html, const QPageLayout& paper);

    /// In pixels.
    QSizeF PaperSize() const { return paper_.size(); }
    int PageCount() const { return document_.pageCount(); }
    QString Title() const { return document_.metaInformation(QTextDocument::DocumentTitle); }
    /// What stands on a page, from 0, a paragraph a line.
    QString TextOfPage(int page) const;
    /// Draws a page, from 0, with its number if there are several. The painter's origin is the corner of the paper, its
    /// unit a dot of a device of this resolution.
    void DrawPage(QPainter& painter, int page, int dotsPerInch) const;

private:
    QTextDocument document_;
    QRectF paper_;  ///< in pixels
    QRectF room_;   ///< within the margins
};

/// A4 upright with margins of 2 cm.
QPageLayout StandardPaper();

/// The bytes of a PDF file, its fonts embedded and its links alive.
std::string MakePdf(const PagedText& text, const QPageLayout& paper);

}  // namespace lore
