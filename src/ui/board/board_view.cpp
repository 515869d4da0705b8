#include "ui/board/board_view.h"

#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>

#include "ui/board/board_empty_pane.h"
#include "ui/board/board_view_impl.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr int kWidestCard = 900;
constexpr int kNarrowestCard = 160;
constexpr int kSideSpace = 3 * kSpace;
constexpr int kLineStep = 140;
constexpr int kMostAhead = 16;  // cards at each side of those in sight that are laid out while nothing else happens
constexpr int kNearJump = 3;    // viewport heights up to which a move goes card by card, without estimates

}  // namespace

BoardView::Impl::Impl(BoardView& owner, const BoardModel& boardModel, const Theme& boardTheme)
    : view(owner), model(boardModel), theme(boardTheme), store(boardModel, boardTheme, *owner.viewport()) {}

BoardView::BoardView(const BoardModel& model, const Theme& theme, QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Note board"));
    setMinimumWidth(kNarrowestCard + 2 * kSideSpace);
    viewport()->setMouseTracking(true);
    impl_ = std::make_unique<Impl>(*this, model, theme);
    impl_->emptyPane = new BoardEmptyPane(theme, viewport());
    connect(impl_->emptyPane, &BoardEmptyPane::ActionClicked, this, &BoardView::FirstStepRequested);
    connect(impl_->emptyPane, &BoardEmptyPane::OtherActionClicked, this, &BoardView::OtherStepRequested);
    connect(&theme, &Theme::Changed, this, [this] {
        impl_->store.ForgetHeights();
        Rebuild();
    });
    connect(&impl_->store.Pictures(), &PictureCache::Loaded, this, [this] {
        if (!impl_->showTimer.isActive())
            viewport()->update();
    });
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, [this] { impl_->Settle(); });
    Rebuild();
}

BoardView::~BoardView() = default;

const BoardOptions& BoardView::Options() const {
    return impl_->store.Options();
}

const BoardModel& BoardView::Model() const {
    return impl_->model;
}

void BoardView::SetOptions(const BoardOptions& options) {
    impl_->store.SetOptions(options);
    Rebuild();
}

void BoardView::SetEmptyState(const BoardEmptyState& state) {
    impl_->emptyPane->SetState(state);
}

void BoardView::SetNoteCommands(const QList<BoardCommand>& commands) {
    impl_->noteCommands = commands;
}

void BoardView::SetOtherNoteBooks(const QStringList& names) {
    impl_->otherNoteBooks = names;
}

int32_t BoardView::FocusNote() const {
    return impl_->focusNote;
}

void BoardView::SetFocusNote(int32_t noteId) {
    impl_->FinishShowing();
    impl_->ChangeFocus(impl_->model.RowOf(noteId), true);
}

QRect BoardView::CardRect(int row) const {
    impl_->FinishShowing();
    if (row < 0 || row >= impl_->heights.Count())
        return {};
    return QRect(impl_->CardLeft(), impl_->TopOf(row), impl_->store.Width(), impl_->heights.HeightOf(row));
}

QRect BoardView::AttachmentRect(int row, int attachment) const {
    impl_->FinishShowing();
    if (row < impl_->topRow || row >= impl_->endRow)
        return {};
    const QRectF rect = impl_->store.CardOf(row).AttachmentRect(attachment);
    return rect.isEmpty() ? QRect() : rect.translated(CardRect(row).topLeft()).toRect();
}

QString BoardView::CardText(int row) const {
    return SpokenCard(impl_->model.NoteAt(row), impl_->model, Options());
}

std::pair<int, int> BoardView::VisibleRows() const {
    impl_->FinishShowing();
    return {impl_->topRow, impl_->endRow};
}

void BoardView::FinishPictures() {
    impl_->FinishShowing();
    impl_->store.Pictures().WaitForAll();
    viewport()->update();
}

void BoardView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    impl_->emptyPane->setGeometry(viewport()->rect());
    const int before = impl_->store.Width();
    impl_->ChooseWidth();
    if (before != impl_->store.Width()) {
        impl_->ReloadHeights();
        impl_->AnchorAt(impl_->topRow, impl_->topOffset);
    }
    impl_->Settle();
}

void BoardView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() != QEvent::FontChange || !impl_)
        return;
    impl_->store.ForgetHeights();
    Rebuild();
}

void BoardView::scrollContentsBy(int, int dy) {
    if (impl_->syncing || impl_->heights.Count() == 0)
        return;
    const QScrollBar& bar = *verticalScrollBar();
    const int wanted = bar.value();
    const bool toEnd = wanted == bar.maximum();
    impl_->CatchUp();
    if (!bar.isSliderDown() && std::abs(dy) <= kNearJump * viewport()->height())
        return impl_->ScrollBy(-dy);
    impl_->JumpTo(wanted, toEnd);
    impl_->Settle();
    viewport()->update();
}

void BoardView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), impl_->theme.Color(ColorRole::Board));
    impl_->PaintCards(painter, event->rect());
    impl_->PaintDropMarker(painter);
    impl_->putOff = (impl_->showTimer.isActive() ? 1 : 0) + (impl_->savedTimer.isActive() ? 1 : 0) +
                    (impl_->aheadTimer.isActive() ? 1 : 0);
}

void BoardView::Impl::ReloadHeights() {
    std::vector<int> all(static_cast<size_t>(model.Count()));
    for (size_t row = 0; row < all.size(); ++row)
        all[row] = store.LikelyHeight(static_cast<int>(row));
    heights.Assign(std::move(all));
}

// Until Settle has laid them out, the rows in sight are those that the estimates let in.
void BoardView::Impl::AnchorAt(int row, int offset) {
    topRow = endRow = std::clamp(row, 0, std::max(0, heights.Count() - 1));
    topOffset = offset;
    if (topRow < model.Count())
        topNote = model.IDAt(topRow);
    for (int y = topOffset; endRow < heights.Count() && y < view.viewport()->height(); ++endRow)
        y += heights.HeightOf(endRow);
}

// Goes by the heights: those of a long list are more than the scroll bar can count.
void BoardView::Impl::ScrollBy(int64_t by) {
    if (heights.Count() == 0)
        return;
    const int height = view.viewport()->height();
    if (std::abs(by) > int64_t{kNearJump} * height) {
        const int64_t last = std::max<int64_t>(0, heights.Total() - height);
        const int64_t position = heights.TopOf(topRow) - topOffset + by;
        JumpTo(std::clamp<int64_t>(position, 0, last), position >= last);
    } else {
        topOffset -= static_cast<int>(by);
    }
    Settle();
    view.viewport()->update();
}

bool BoardView::Impl::IsAtEnd(int direction) const {
    if (direction < 0)
        return topRow == 0 && topOffset == 0;
    return endRow == heights.Count() && TopOf(endRow) <= view.viewport()->height();
}

// The end of the list is the end of its last card, whatever the estimates of the heights say.
void BoardView::Impl::JumpTo(int64_t position, bool toEnd) {
    const int row = toEnd ? heights.Count() - 1 : heights.RowAt(position);
    AnchorAt(row, toEnd ? view.viewport()->height() - HeightOf(row) : static_cast<int>(heights.TopOf(row) - position));
}

int BoardView::Impl::Measure(int row) {
    const int height = store.CardOf(row).Height();
    heights.SetHeight(row, height);
    return height;
}

int BoardView::Impl::HeightOf(int row) {
    return store.IsMeasured(row) ? heights.HeightOf(row) : Measure(row);
}

void BoardView::Impl::ClimbTo() {
    while (topOffset > 0 && topRow > 0)
        topOffset -= HeightOf(--topRow);
    topOffset = std::min(topOffset, 0);
}

// Lays out the cards from a row on down to the lower edge; gives where the last one ends.
int BoardView::Impl::DescendFrom(int row, int y) {
    const int bottom = view.viewport()->height();
    endRow = row;
    while (endRow < heights.Count() && (y < bottom || endRow == row))
        y += Measure(endRow++);
    return y;
}

void BoardView::Impl::Settle() {
    if (heights.Count() == 0) {
        topRow = topOffset = endRow = 0;
        return SyncScrollBar();
    }
    ClimbTo();
    while (topRow + 1 < heights.Count() && topOffset + HeightOf(topRow) <= 0)
        topOffset += HeightOf(topRow++);
    const int missing = view.viewport()->height() - DescendFrom(topRow, topOffset);
    if (missing > 0 && (topRow > 0 || topOffset < 0)) {
        topOffset += missing;
        ClimbTo();
        DescendFrom(topRow, topOffset);
    }
    topNote = model.IDAt(topRow);
    SyncScrollBar();
    aheadTimer.start(0, &view);
}

// Lays out the next of the cards that have room from a row on, of at most so many; false if all of them are.
bool BoardView::Impl::LayOutFrom(int row, int step, int room, int most) {
    for (; most > 0 && room > 0 && row >= 0 && row < heights.Count(); --most, row += step) {
        if (!store.HasCardOf(row)) {
            Measure(row);
            SyncScrollBar();
            return true;
        }
        room -= heights.HeightOf(row);
    }
    return false;
}

// Lays out one of the cards that come into sight next, those a page down first; false if all of them are.
bool BoardView::Impl::LayOutAhead() {
    if (endRow - topRow + 2 * kMostAhead > CardStore::kMostCards)
        return false;
    const int page = view.viewport()->height();
    return LayOutFrom(endRow, 1, page, kMostAhead) || LayOutFrom(topRow - 1, -1, page, kMostAhead);
}

void BoardView::Impl::SyncScrollBar() {
    QScrollBar& bar = *view.verticalScrollBar();
    if (bar.isSliderDown())
        return;
    const int height = view.viewport()->height();
    const int64_t range = std::clamp<int64_t>(heights.Total() - height, 0, INT32_MAX);
    syncing = true;
    bar.setSingleStep(kLineStep);
    bar.setPageStep(std::max(1, height));
    bar.setRange(0, static_cast<int>(range));
    bar.setValue(static_cast<int>(std::min<int64_t>(heights.TopOf(topRow) - topOffset, range)));
    syncing = false;
}

void BoardView::Impl::ChooseWidth() {
    const int room = view.viewport()->width() - 2 * kSideSpace;
    store.SetWidth(std::clamp(room, kNarrowestCard, kWidestCard));
}

int BoardView::Impl::CardLeft() const {
    return (view.viewport()->width() - store.Width()) / 2;
}

int BoardView::Impl::TopOf(int row) const {
    return static_cast<int>(
        std::clamp<int64_t>(heights.TopOf(row) - heights.TopOf(topRow) + topOffset, -(1 << 30), 1 << 30));
}

// A point belongs to the card whose rectangle holds it; beside the cards and beyond the edges there is none.
int BoardView::Impl::RowAt(const QPoint& point) const {
    const bool beside = point.x() < CardLeft() || point.x() >= CardLeft() + store.Width();
    if (beside || !view.viewport()->rect().contains(point))
        return -1;
    int top = topOffset;
    for (int row = topRow; row < endRow; ++row) {
        top += heights.HeightOf(row);
        if (point.y() < top)
            return point.y() < topOffset ? -1 : row;
    }
    return -1;
}

CardHit BoardView::Impl::HitTest(const QPoint& point, int row) {
    return row < 0 ? CardHit() : store.CardOf(row).HitTest(point - QPoint(CardLeft(), TopOf(row)));
}

void BoardView::Impl::UpdateRow(int row) {
    if (row >= topRow && row < endRow && !showTimer.isActive())
        view.viewport()->update(view.CardRect(row).adjusted(-kSpace, -kSpace, kSpace, kSpace));
}

void BoardView::Impl::PaintCards(QPainter& painter, const QRect& area) {
    const int left = CardLeft();
    int top = topOffset;
    for (int row = topRow; row < endRow && top < area.bottom() + kSpace; ++row) {
        if (IsShowing() && !store.HasCardOf(row))
            return;
        const Card& card = store.CardOf(row);
        if (top + card.Height() >= area.top() - kSpace) {
            CardPaint paint;
            paint.clip = QRectF(area).translated(-left, -top);
            paint.hovered = row == hoverRow && !drag.IsRunning();
            paint.hot = row == hoverRow ? hot : CardHit();
            paint.devicePixelRatio = painter.device()->devicePixelRatioF();
            card.Paint(painter, QPoint(left, top), paint);
            if (drag.IsRunning() && row == drag.Row())
                PaintVeil(painter, view.CardRect(row));
        }
        top += card.Height();
    }
}

// The card that is being dragged fades into the ground.
void BoardView::Impl::PaintVeil(QPainter& painter, const QRect& card) const {
    QColor veil = theme.Color(ColorRole::Board);
    veil.setAlphaF(0.6f);
    painter.fillRect(card.adjusted(-kSpace, 0, kSpace, 0), veil);
}

void BoardView::Impl::PaintDropMarker(QPainter& painter) {
    if (!drag.MovesNote())
        return;
    const QRect target = view.CardRect(drag.Target());
    const int y = drag.Side() == DropSide::Before ? target.top() + 2 : target.bottom() + 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme.Color(ColorRole::Accent), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(target.left() + 2 * kSpace, y, target.right(), y);
    painter.setBrush(theme.Color(ColorRole::Accent));
    painter.drawEllipse(QPointF(target.left() + kSpace, y), kSpace - 1, kSpace - 1);
}

void BoardView::Impl::ShowEmptyPane() {
    emptyPane->setGeometry(view.viewport()->rect());
    emptyPane->setVisible(model.Count() == 0);
}

}  // namespace lore
