#include "printsave/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/pdf/paged_text.h"
#include "ui/theme_look.h"

namespace lore {

namespace {

constexpr int kGap = kSpace * 4;  // around each sheet
constexpr double kSmallestZoom = 0.1, kLargestZoom = 8, kWheelStep = 1.1;
constexpr int kGlanceCharacters = 26;  // the width of a sheet among many
constexpr int kKeptPictures = 96;      // MiB
constexpr int kLinesAStep = 3;

}  // namespace

PageView::PageView(const ThemeLook& theme, QWidget* parent)
    : QAbstractScrollArea(parent), theme_(theme), pictures_(kKeptPictures * 1024) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
}

int PageView::Count() const {
    return text_ ? text_->PageCount() : 0;
}

void PageView::SetText(const PagedText& text) {
    text_ = &text;
    pictures_.clear();
    current_ = std::clamp(current_, 0, std::max(Count() - 1, 0));
    ApplyFit();
    LayOut();
    emit CurrentPageChanged();
}

void PageView::SetArrangement(Arrangement arrangement) {
    arrangement_ = arrangement;
    Fit(arrangement == Arrangement::All ? FitKind::Glance : fit_ == FitKind::Glance ? FitKind::Width : fit_);
}

void PageView::SetZoom(double zoom) {
    fit_ = FitKind::None;
    ChangeZoom(zoom);
}

void PageView::Fit(FitKind kind) {
    fit_ = kind;
    ApplyFit();
    LayOut();
    SetCurrentPage(CurrentPage());
}

void PageView::ApplyFit() {
    if (!text_ || fit_ == FitKind::None)
        return;
    const QSizeF sheet = text_->PaperSize();
    const int across = arrangement_ == Arrangement::Facing ? 2 : 1;
    const double wide = (viewport()->width() - kGap * (across + 1)) / (sheet.width() * across);
    const double high = (viewport()->height() - kGap * 2) / sheet.height();
    const double glance = fontMetrics().averageCharWidth() * kGlanceCharacters / sheet.width();
    ChangeZoom(fit_ == FitKind::Width ? wide : fit_ == FitKind::Page ? std::min(wide, high) : glance);
}

void PageView::ChangeZoom(double zoom) {
    const double wanted = std::clamp(zoom, kSmallestZoom, kLargestZoom);
    if (wanted == zoom_)
        return;
    // What stands at the top stays there.
    const int top = PageAt(verticalScrollBar()->value());
    const double into = text_ ? double(-SheetRect(top).top()) / SheetSize().height() : 0;
    zoom_ = wanted;
    pictures_.clear();
    LayOut();
    goes_ = true;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + SheetRect(top).top() +
                                  static_cast<int>(into * SheetSize().height()));
    goes_ = false;
}

void PageView::LayOut() {
    const QSize sheet = SheetSize();
    const int wide = sheet.width() + kGap, high = sheet.height() + kGap;
    columns_ = arrangement_ == Arrangement::One      ? 1
               : arrangement_ == Arrangement::Facing ? 2
                                                     : std::max(1, (viewport()->width() - kGap) / wide);
    const int rows = Count() == 0 ? 0 : CellOf(Count() - 1) / columns_ + 1;
    verticalScrollBar()->setRange(0, std::max(0, rows * high + kGap - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(fontMetrics().height() * kLinesAStep);
    horizontalScrollBar()->setRange(0, std::max(0, columns_ * wide + kGap - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    viewport()->update();
}

/// The first page of a pair stands at the right, as in a book.
int PageView::CellOf(int page) const {
    return arrangement_ == Arrangement::Facing ? page + 1 : page;
}

QSize PageView::SheetSize() const {
    return text_ ? (text_->PaperSize() * zoom_).toSize().expandedTo(QSize(1, 1)) : QSize(1, 1);
}

QRect PageView::SheetRect(int page) const {
    const QSize sheet = SheetSize();
    const int cell = CellOf(page);
    const int wide = columns_ * (sheet.width() + kGap) + kGap;
    const int left = std::max(0, (viewport()->width() - wide) / 2) + kGap + cell % columns_ * (sheet.width() + kGap);
    const int top = kGap + cell / columns_ * (sheet.height() + kGap);
    return {QPoint(left - horizontalScrollBar()->value(), top - verticalScrollBar()->value()), sheet};
}

/// The first page of the row at a height of the whole.
int PageView::PageAt(int contentsY) const {
    const int row = std::max(0, contentsY - kGap) / (SheetSize().height() + kGap);
    const int page = row * columns_ - CellOf(0);
    return std::clamp(page, 0, std::max(Count() - 1, 0));
}

std::pair<int, int> PageView::VisiblePages() const {
    const int top = verticalScrollBar()->value();
    const int last = PageAt(top + viewport()->height()) + columns_ - 1;
    return {PageAt(top) + 1, std::min(last + 1, Count())};
}

void PageView::SetCurrentPage(int page) {
    const int wanted = std::clamp(page, 1, std::max(Count(), 1)) - 1;
    goes_ = true;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + SheetRect(wanted).top() - kGap);
    goes_ = false;
    if (wanted == current_)
        return;
    current_ = wanted;
    emit CurrentPageChanged();
}

const QPixmap& PageView::Picture(int page) {
    if (const QPixmap* const kept = pictures_.object(page))
        return *kept;
    const qreal ratio = devicePixelRatioF();
    auto* const picture = new QPixmap(SheetSize() * ratio);
    picture->setDevicePixelRatio(ratio);
    picture->fill(Qt::white);
    QPainter painter(picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(zoom_, zoom_);
    text_->DrawPage(painter, page, PagedText::kPixelsPerInch);
    painter.end();
    const auto bytes = static_cast<qsizetype>(picture->width()) * picture->height() * 4;
    // One alone may be larger than all that is kept.
    pictures_.insert(page, picture, static_cast<int>(std::min<qsizetype>(bytes / 1024, pictures_.maxCost())));
    return *picture;
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), theme_.Color(ColorRole::Board));
    painter.setPen(theme_.Color(ColorRole::FaintEdge));
    const auto [first, last] = VisiblePages();
    for (int page = first - 1; text_ && page < last; ++page) {
        const QRect sheet = SheetRect(page);
        if (!sheet.intersects(event->rect()))
            continue;
        painter.drawPixmap(sheet.topLeft(), Picture(page));
        painter.drawRect(sheet.adjusted(-1, -1, 0, 0));
    }
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    ApplyFit();
    LayOut();
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    if (goes_)
        return;
    const int middle = PageAt(verticalScrollBar()->value() + viewport()->height() / 2);
    if (middle == current_)
        return;
    current_ = middle;
    emit CurrentPageChanged();
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    SetZoom(zoom_ * (event->angleDelta().y() > 0 ? kWheelStep : 1 / kWheelStep));
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home)
        return SetCurrentPage(1);
    if (event->key() == Qt::Key_End)
        return SetCurrentPage(Count());
    QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace lore
