#include "printsave/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/look/announce.h"
#include "ui/look/focus_child.h"
#include "ui/look/theme_look.h"

namespace lore {

namespace {

constexpr int kGap = kSpace * 4;  // around each sheet
constexpr double kSmallestZoom = 0.1, kLargestZoom = 8, kWheelStep = 1.1;
constexpr int kGlanceCharacters = 26;     // the width of a sheet among many
constexpr int kKeptPictures = 96 * 1024;  // KiB
constexpr int kLinesAStep = 3;

}  // namespace

PageView::PageView(const ThemeLook& theme, QWidget* parent)
    : QAbstractScrollArea(parent), theme_(theme), pictures_(kKeptPictures) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
}

void PageView::Show(ShownPages pages) {
    pages_ = std::move(pages);
    asked_.clear();
    read_ = {};
    for (const int page : pictures_.keys())
        pictures_.object(page)->scale = 0;
    current_ = std::clamp(current_, 0, std::max(pages_.count - 1, 0));
    ApplyFit();
    LayOut();
    emit CurrentPageChanged();
}

void PageView::Take(int page, double scale, const QImage& picture) {
    if (asked_.value(page) == scale)
        asked_.remove(page);
    if (!picture.isNull()) {
        QPixmap pixmap = QPixmap::fromImage(picture);
        const qsizetype bytes = qsizetype{pixmap.width()} * pixmap.height() * 4;
        // One alone may be larger than all that is kept.
        pictures_.insert(page, new Picture{std::move(pixmap), scale},
                         static_cast<int>(std::min<qsizetype>(bytes / 1024, pictures_.maxCost())));
    }
    viewport()->update();
}

bool PageView::HasPicture(int page) const {
    const Picture* const picture = pictures_.object(page);
    return picture && picture->scale == Scale();
}

void PageView::AskFor(int page) {
    if (HasPicture(page) || asked_.value(page) == Scale() || !pages_.draw)
        return;
    asked_[page] = Scale();
    pages_.draw(page, Scale());
}

bool PageView::IsDrawn() const {
    const auto [first, last] = VisiblePages();
    for (int page = first - 1; page < last; ++page)
        if (!HasPicture(page))
            return false;
    return true;
}

void PageView::SetArrangement(Arrangement arrangement) {
    arrangement_ = arrangement;
    Fit(arrangement == Arrangement::All ? FitKind::Glance : fit_ == FitKind::Glance ? FitKind::Width : fit_);
}

void PageView::SetZoom(double zoom) {
    fit_ = FitKind::None;
    ChangeZoom(zoom);
    TellZoom();
}

void PageView::Fit(FitKind kind) {
    fit_ = kind;
    ApplyFit();
    LayOut();
    SetCurrentPage(CurrentPage());
    TellZoom();
}

void PageView::TellZoom() {
    Announce(*this, tr("Zoom %1%").arg(qRound(zoom_ * 100)));
}

void PageView::ApplyFit() {
    if (pages_.count == 0 || fit_ == FitKind::None)
        return;
    const QSizeF sheet = pages_.paper;
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
    const double into = double(-SheetRect(top).top()) / SheetSize().height();
    zoom_ = wanted;
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
    const int rows = pages_.count == 0 ? 0 : CellOf(pages_.count - 1) / columns_ + 1;
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
    return (pages_.paper * zoom_).toSize().expandedTo(QSize(1, 1));
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
    return std::clamp(page, 0, std::max(pages_.count - 1, 0));
}

std::pair<int, int> PageView::VisiblePages() const {
    const int top = verticalScrollBar()->value();
    const int last = PageAt(top + viewport()->height() - 1) + columns_ - 1;
    return {PageAt(top) + 1, std::min(last + 1, pages_.count)};
}

void PageView::SetCurrentPage(int page) {
    const int wanted = std::clamp(page, 1, std::max(pages_.count, 1)) - 1;
    goes_ = true;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + SheetRect(wanted).top() - kGap);
    goes_ = false;
    MakeCurrent(wanted);
}

void PageView::MakeCurrent(int page) {
    if (page == current_)
        return;
    current_ = page;
    if (hasFocus())
        TellFocusChild(*this, current_);
    emit CurrentPageChanged();
}

QString PageView::PageName(int page) const {
    return pages_.isWhole ? tr("Page %1 of %2").arg(page).arg(pages_.count)
                          : tr("Page %1 \u2013 more are being laid out").arg(page);
}

QString PageView::PageText(int page) const {
    if (read_.first != page && pages_.text)
        read_ = {page, pages_.text(page - 1)};
    return read_.second;
}

void PageView::paintEvent(QPaintEvent* event) {
    const auto [first, last] = VisiblePages();
    for (int page = first - 1; page < last; ++page)
        AskFor(page);
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillRect(event->rect(), theme_.Color(ColorRole::Board));
    painter.setPen(theme_.Color(ColorRole::FaintEdge));
    for (int page = first - 1; page < last; ++page) {
        const QRect sheet = SheetRect(page);
        if (!sheet.intersects(event->rect()))
            continue;
        if (const Picture* const picture = pictures_.object(page))
            painter.drawPixmap(sheet, picture->pixmap);
        else
            painter.fillRect(sheet, Qt::white);
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
    MakeCurrent(PageAt(verticalScrollBar()->value() + viewport()->height() / 2));
}

void PageView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    TellFocusChildSoon(*this);
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
        return SetCurrentPage(pages_.count);
    QAbstractScrollArea::keyPressEvent(event);
}

}  // namespace lore
