#include "ui/sources/citation_layout.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <array>

#include "bibliography/citation_spans.h"
#include "bibliography/source_types.h"
#include "ui/board/card_emphasis.h"
#include "ui/look/qt_text.h"

namespace lore {

QFont SourceListFont(int characterHeight) {
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    // The height of a line is more than that of the letters.
    int size = characterHeight;
    do
        font.setPixelSize(size);
    while (QFontMetrics(font).height() > characterHeight && --size > 1);
    return font;
}

int CharactersALine(const SourceBoxFigures& figures, int width) {
    const QFontMetricsF metrics(SourceListFont(figures.characterHeight));
    return CharactersALine(figures, width, 0, metrics.horizontalAdvance(QLatin1Char('0')));
}

CitationLayout::CitationLayout(const CSource& source, const SourceBoxFigures& figures, int charactersALine)
    : lineHeight_(figures.characterHeight) {
    CSource copy = source;
    lines_ = WrapSource(copy, charactersALine);
    QString text = ToQString(copy.FormattedText).replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    while (text.endsWith(QLatin1Char(' ')) || text.endsWith(QChar(QChar::LineSeparator)))
        text.chop(1);
    layout_.setText(text);
    QFont font = SourceListFont(figures.characterHeight);
    font.setWeight(QFont::Weight(FontWeight(kEmphasisNone)));
    layout_.setFont(font);
    layout_.setFormats(CitationEmphasis(copy));
    layout_.setCacheEnabled(true);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout_.setTextOption(option);
    LayOut(QFontMetricsF(font).ascent());
}

// Another font that stands in for characters which this one lacks makes a line higher: what stays even are the
// baselines.
void CitationLayout::LayOut(double ascent) {
    layout_.beginLayout();
    for (int y = 0;; y += lineHeight_) {
        QTextLine line = layout_.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(1e6);
        line.setPosition(QPointF(0, y + ascent - line.ascent()));
    }
    layout_.endLayout();
}

void CitationLayout::Paint(QPainter& painter, const QRect& place) const {
    for (int i = 0; i < layout_.lineCount(); ++i) {
        const QTextLine line = layout_.lineAt(i);
        const double width = line.naturalTextWidth();
        painter.save();
        painter.translate(place.left(), place.top());
        if (width > place.width() && width > 0)
            painter.scale(place.width() / width, 1);
        line.draw(&painter, QPointF(0, 0));
        painter.restore();
    }
}

QString SourceMarkIcon(int32_t sourceType) {
    constexpr std::array<const char*, kTypeCount> kMarks = {"book-open",      "file-text", "newspaper", "globe",
                                                            "graduation-cap", "film",      "mic"};
    const bool standard = sourceType >= 1 && sourceType <= kTypeCount;
    return QString::fromLatin1(standard ? kMarks[static_cast<size_t>(sourceType - 1)] : "bookmark");
}

}  // namespace lore
