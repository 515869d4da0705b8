#include "ui/card_sources.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "bibliography/citation.h"
#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {
namespace {

constexpr size_t kLongestEmphasized = 20000;  // bytes of a citation whose emphasis is looked up
constexpr size_t kMostSpans = 200;
constexpr int kWidestIndent = 40;  // blanks

QTextCharFormat FormatOf(int32_t kind) {
    QTextCharFormat format;
    format.setFontWeight(FontWeight(kind) > 480 ? QFont::Bold : QFont::Normal);
    format.setFontItalic(kind == kItalic || kind == kBoldItalic || kind == kItalicUnderline ||
                         kind == kBoldItalicUnderline);
    format.setFontUnderline(kind == kUnderline || kind == kBoldUnderline || kind == kItalicUnderline ||
                            kind == kBoldItalicUnderline);
    return format;
}

// Spans count bytes, a layout counts the code units of its text.
QList<QTextLayout::FormatRange> EmphasisOf(const CSource& source) {
    const std::string& text = source.FormattedText;
    QList<QTextLayout::FormatRange> ranges;
    if (text.size() > kLongestEmphasized || source.SpanKinds.Count() == 0 || source.SpanKinds.Count() > kMostSpans)
        return ranges;
    const bool utf8 = IsValidUtf8(text);
    int position = 0, begin = 0;
    int32_t kind = kEmphasisNone;
    const auto close = [&](int32_t next) {
        if (kind != kEmphasisNone && position > begin)
            ranges.append({begin, position - begin, FormatOf(kind)});
        kind = next;
        begin = position;
    };
    for (size_t byte = 0; byte < text.size(); ++byte) {
        const auto value = static_cast<unsigned char>(text[byte]);
        if (utf8 && (value & 0xc0u) == 0x80u)
            continue;
        if (const int32_t here = EmphasisAt(source, static_cast<int32_t>(byte)); here != kind)
            close(here);
        position += utf8 && value >= 0xf0 ? 2 : 1;
    }
    close(kEmphasisNone);
    return ranges;
}

class SourceBlock : public CardBlock {
public:
    SourceBlock(const CSource& source, const std::string& remark, int width, const CardContext& context)
        : color_(context.theme.Color(ColorRole::Text)) {
        QString text = ToQString(source.FormattedText).replace(u'\n', QChar::LineSeparator);
        QList<QTextLayout::FormatRange> formats = EmphasisOf(source);
        if (!remark.empty()) {
            const QString shown = QStringLiteral("  \u2013  ") + ToQString(remark);
            QTextCharFormat dim;
            dim.setForeground(context.theme.Color(ColorRole::DimText));
            formats.append({static_cast<int>(text.size()), static_cast<int>(shown.size()), dim});
            text += shown;
        }
        const QFont font = context.Font(QStringLiteral("Arial"), context.options.sourceSize);
        layout_.setText(text);
        layout_.setFont(font);
        layout_.setFormats(formats);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout_.setTextOption(option);
        const QFontMetricsF metrics(font, context.device);
        const int blanks = std::clamp<int>(source.IndentSpaces, 0, kWidestIndent);
        LayOut(width, std::min(blanks * metrics.horizontalAdvance(u' '), width / 3.0));
    }

    int Height() const override { return static_cast<int>(std::ceil(height_)); }

    void Paint(QPainter& painter, const CardPaint& paint) const override {
        painter.setPen(color_);
        layout_.draw(&painter, QPointF(0, 0), {}, paint.clip);
    }

private:
    void LayOut(double width, double indent) {
        layout_.setCacheEnabled(true);
        layout_.beginLayout();
        for (double left = 0;; left = indent) {
            QTextLine line = layout_.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(width - left);
            line.setPosition(QPointF(left, height_));
            height_ += line.height();
        }
        layout_.endLayout();
    }

    QTextLayout layout_;
    QColor color_;
    double height_ = 0;
};

}  // namespace

std::unique_ptr<CardBlock> MakeSourceBlock(const CSource& source, const std::string& remark, int width,
                                           const CardContext& context) {
    return std::make_unique<SourceBlock>(source, remark, width, context);
}

}  // namespace lore
