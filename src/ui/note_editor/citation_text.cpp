#include "ui/note_editor/citation_text.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/board/card_emphasis.h"
#include "ui/look/qt_text.h"

namespace lore {

namespace {
constexpr int kHintCharacters = 40;  // in a line, before the width is known
}

CitationView::CitationView(const CSource& source, QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    QString text = ToQString(source.FormattedText).replace(u'\n', QChar::LineSeparator);
    while (text.endsWith(u' ') || text.endsWith(QChar::LineSeparator))
        text.chop(1);
    layout_.setText(text);
    layout_.setFormats(CitationEmphasis(source));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout_.setTextOption(option);
    layout_.setCacheEnabled(true);
}

void CitationView::LayOut(int width) const {
    if (laidOut_ == width && layout_.font() == font())
        return;
    laidOut_ = width;
    layout_.setFont(font());
    double height = 0;
    layout_.beginLayout();
    for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition(QPointF(0, height));
        height += line.height();
    }
    layout_.endLayout();
    height_ = static_cast<int>(std::ceil(height));
}

int CitationView::heightForWidth(int width) const {
    LayOut(width);
    return height_;
}

QSize CitationView::sizeHint() const {
    const int wide = fontMetrics().averageCharWidth() * kHintCharacters;
    return {wide, heightForWidth(wide)};
}

QSize CitationView::minimumSizeHint() const {
    return {0, fontMetrics().lineSpacing()};
}

void CitationView::paintEvent(QPaintEvent* event) {
    LayOut(width());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    layout_.draw(&painter, QPointF(0, 0), {}, event->rect());
}

void CitationView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

}  // namespace lore
