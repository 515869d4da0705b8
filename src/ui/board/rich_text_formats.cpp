#include "ui/board/rich_text_formats.h"

#include <QFont>
#include <algorithm>
#include <cstdlib>

#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;
constexpr int kListStep = 360;  // twips by which a list without indents of its own hangs

QColor ToColor(const TextColor& color) {
    return QColor(color.red, color.green, color.blue);
}

Qt::Alignment AlignmentOf(const ParagraphFormat& format) {
    switch (format.align) {
        // The leading edge: a paragraph of right-to-left text that says nothing else begins at the right.
        case ParagraphAlign::Left:
            return Qt::AlignLeft;
        case ParagraphAlign::Center:
            return Qt::AlignHCenter;
        case ParagraphAlign::Right:
            return Qt::AlignRight | Qt::AlignAbsolute;
        case ParagraphAlign::Justify:
            return Qt::AlignJustify;
    }
    return Qt::AlignLeft;
}

}  // namespace

QString RichTextFormats::FamilyOf(const CharFormat& format) const {
    const int32_t font = format.font >= 0 ? format.font : document_.defaultFont;
    if (font < 0 || static_cast<size_t>(font) >= document_.fonts.size())
        return {};
    return QString::fromStdString(document_.fonts[static_cast<size_t>(font)].name);
}

QTextCharFormat RichTextFormats::Characters(const CharFormat& format, const QColor& ground) const {
    QTextCharFormat shown;
    if (const QString family = FamilyOf(format); !family.isEmpty())
        shown.setFontFamilies(QStringList{family});
    const double pixels = format.halfPoints / 2.0 * kPixelsPerPoint * look_.zoom;
    shown.setFontPointSize(std::max(1.0, pixels * 72.0 / look_.dotsPerInch));
    shown.setFontWeight(format.bold ? QFont::Bold : QFont::Normal);
    shown.setFontItalic(format.italic);
    shown.setFontUnderline(format.underline);
    shown.setFontStrikeOut(format.strike);
    if (format.smallCaps || format.allCaps)
        shown.setFontCapitalization(format.allCaps ? QFont::AllUppercase : QFont::SmallCaps);
    if (format.position != ScriptPosition::Baseline)
        shown.setVerticalAlignment(format.position == ScriptPosition::Superscript ? QTextCharFormat::AlignSuperScript
                                                                                  : QTextCharFormat::AlignSubScript);
    QColor behind = ground;
    if (format.background) {
        behind = theme_.Mark(ToColor(*format.background));
        shown.setBackground(behind);
    }
    if (format.link >= 0 && static_cast<size_t>(format.link) < document_.links.size()) {
        shown.setAnchor(true);
        shown.setAnchorHref(QString::fromStdString(document_.links[static_cast<size_t>(format.link)]));
        shown.setFontUnderline(true);
        shown.setForeground(Legible(theme_.Color(ColorRole::Link), behind));
    } else if (format.color) {
        shown.setForeground(Legible(ToColor(*format.color), behind));
    } else if (behind != theme_.Color(ColorRole::Card)) {
        shown.setForeground(Legible(theme_.Color(ColorRole::Text), behind));
    }
    return shown;
}

QTextBlockFormat RichTextFormats::Paragraph(const ParagraphFormat& format) const {
    QTextBlockFormat shown;
    shown.setAlignment(AlignmentOf(format));
    if (format.rightToLeft) {
        shown.setLayoutDirection(Qt::RightToLeft);
        if (format.align == ParagraphAlign::Left || format.align == ParagraphAlign::Right)
            shown.setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
    }
    double left = format.leftIndent, first = format.firstIndent;
    if (format.list != ListKind::None && left <= 0) {
        left = kListStep * (format.listLevel + 1);
        first = -kListStep;
    }
    shown.setLeftMargin(std::max(0.0, Pixels(format.rightToLeft ? format.rightIndent : left)));
    shown.setRightMargin(std::max(0.0, Pixels(format.rightToLeft ? left : format.rightIndent)));
    shown.setTextIndent(Pixels(std::max(first, -left)));
    if (format.list != ListKind::None && first < 0)
        shown.setTabPositions({QTextOption::Tab(Pixels(-first), QTextOption::LeftTab)});
    shown.setTopMargin(Pixels(std::max<int>(0, format.spaceBefore)));
    shown.setBottomMargin(Pixels(std::max<int>(0, format.spaceAfter)));
    if (format.lineMultiple && format.lineSpacing > 0)
        shown.setLineHeight(format.lineSpacing / 240.0 * 100.0, QTextBlockFormat::ProportionalHeight);
    else if (format.lineSpacing != 0)
        shown.setLineHeight(Pixels(std::abs(format.lineSpacing)),
                            format.lineSpacing < 0 ? QTextBlockFormat::FixedHeight : QTextBlockFormat::MinimumHeight);
    return shown;
}

QTextTableCellFormat RichTextFormats::Cell(const CellFormat& look) const {
    QTextTableCellFormat format;
    if (look.background)
        format.setBackground(theme_.Ground(ToColor(*look.background)));
    const QBrush line(theme_.Color(ColorRole::Edge));
    const auto style = [&look](CellBorder side) {
        return look.borders & side ? QTextFrameFormat::BorderStyle_Solid : QTextFrameFormat::BorderStyle_None;
    };
    format.setTopBorder(1);
    format.setLeftBorder(1);
    format.setBottomBorder(1);
    format.setRightBorder(1);
    format.setTopBorderBrush(line);
    format.setLeftBorderBrush(line);
    format.setBottomBorderBrush(line);
    format.setRightBorderBrush(line);
    format.setTopBorderStyle(style(kBorderTop));
    format.setLeftBorderStyle(style(kBorderLeft));
    format.setBottomBorderStyle(style(kBorderBottom));
    format.setRightBorderStyle(style(kBorderRight));
    return format;
}

QString ListCounter::NextMark(const ParagraphFormat& format) {
    return QString::fromStdString(marks_.NextMark(format));
}

}  // namespace lore
