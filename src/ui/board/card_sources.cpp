#include "ui/board/card_sources.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "ui/board/card_emphasis.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr int kWidestIndent = 40;  // blanks

class SourceBlock : public CardBlock {
public:
    SourceBlock(const CSource& source, const std::string& remark, int width, const CardContext& context)
        : color_(context.theme.Color(ColorRole::Text)) {
        QString text = ToQString(source.FormattedText).replace(u'\n', QChar::LineSeparator);
        QList<QTextLayout::FormatRange> formats = CitationEmphasis(source);
        if (!remark.empty()) {
            const QString shown = QStringLiteral("  \u2013  ") + ToQString(remark);
            QTextCharFormat dim;
            dim.setForeground(context.theme.Color(ColorRole::DimText));
            formats.append({static_cast<int>(text.size()), static_cast<int>(shown.size()), dim});
            text += shown;
        }
        const QFont font =
            context.Font(QStringLiteral("Arial"), std::floor(context.options.sourceSize * context.Zoom()));
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
