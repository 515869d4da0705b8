#include "ui/sources/source_preview_wnd.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {
constexpr int kMargin = 2 * kSpace;
constexpr int kLeastLines = 2;
}  // namespace

CSourcePreviewWnd::CSourcePreviewWnd(const Theme& theme, QWidget* parent) : QAbstractScrollArea(parent), theme_(theme) {
    setObjectName("preview");
    setAccessibleName(tr("Formatted Preview"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    verticalScrollBar()->setSingleStep(kSourcesListBoxes.characterHeight);
    setMinimumHeight(kSourcesListBoxes.characterHeight * kLeastLines + 2 * kMargin);
    connect(&theme, &Theme::Changed, viewport(), qOverload<>(&QWidget::update));
}

void CSourcePreviewWnd::Show(const CSource& source) {
    source_ = source;
    setAccessibleDescription(ToQString(source.FormattedText).simplified());
    LayOut();
}

void CSourcePreviewWnd::LayOut() {
    const QFontMetricsF metrics(SourceListFont(kSourcesListBoxes.characterHeight));
    const int room = viewport()->width() - 2 * kMargin;
    const int characters = std::max(10, static_cast<int>(room / metrics.horizontalAdvance(QLatin1Char('0'))));
    layout_ = std::make_unique<CitationLayout>(source_, kSourcesListBoxes, characters);
    verticalScrollBar()->setRange(0, std::max(0, layout_->Height() + 2 * kMargin - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    viewport()->update();
}

void CSourcePreviewWnd::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    LayOut();
}

void CSourcePreviewWnd::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), theme_.Color(ColorRole::Window));
    if (!layout_)
        return;
    painter.setPen(theme_.Color(ColorRole::Text));
    layout_->Paint(painter, QRect(kMargin, kMargin - verticalScrollBar()->value(), viewport()->width() - 2 * kMargin,
                                  layout_->Height()));
}

}  // namespace lore
