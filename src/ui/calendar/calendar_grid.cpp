#include "ui/calendar/calendar_grid.h"

#include <QAccessible>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <numeric>

#include "calendar/bar_colors.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kColumns = MonthGrid::kColumns;
constexpr int kMostWeeks = 6;
constexpr int kGap = 2;  // between bars
constexpr int kTextLeft = 8, kTextRight = 5, kMarkRoom = 20;
constexpr int kFewestRows = 2, kUsualRows = 3;     // of bars, in the cell of a week with few and at first
constexpr int kFewestChars = 9, kUsualChars = 22;  // in a cell; the usual ones are a time and a few words
constexpr const char* kDays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr double kCorner = 6;

/// A bar whose ends are round where its event begins and ends.
QPainterPath BarShape(const QRectF& rect, bool roundLeft, bool roundRight) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(rect, kCorner, kCorner);
    if (!roundLeft)
        path.addRect(QRectF(rect.left(), rect.top(), rect.width() / 2, rect.height()));
    if (!roundRight)
        path.addRect(QRectF(rect.center().x(), rect.top(), rect.width() / 2, rect.height()));
    return path.simplified();
}

}  // namespace

CalendarGrid::CalendarGrid(MonthView& view, const Theme& theme, QWidget* parent)
    : QWidget(parent), view_(view), theme_(theme) {
    setObjectName("calendarGrid");
    setAccessibleName(tr("Days of the month"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    connect(&theme, &Theme::Changed, this, &CalendarGrid::Refresh);
}

int CalendarGrid::HeaderHeight() const {
    return QFontMetrics(theme_.Font(TextSize::Small)).height() + kSpace * 2;
}

int CalendarGrid::DayLine() const {
    return QFontMetrics(theme_.Font(TextSize::Body)).height() + kSpace * 2;
}

int CalendarGrid::BarHeight() const {
    return QFontMetrics(theme_.Font(TextSize::Small)).height() + kSpace;
}

QSize CalendarGrid::minimumSizeHint() const {
    return SizeFor(kFewestChars, 1);
}

QSize CalendarGrid::sizeHint() const {
    return SizeFor(kUsualChars, kUsualRows);
}

QSize CalendarGrid::SizeFor(int chars, int bars) const {
    const int cell = QFontMetrics(theme_.Font(TextSize::Small)).averageCharWidth() * chars;
    return {cell * kColumns, HeaderHeight() + kMostWeeks * (DayLine() + bars * (BarHeight() + kGap) + kGap)};
}

void CalendarGrid::Refresh() {
    highlighted_.reset();
    LayOut();
    update();
    TellSelection();
}

void CalendarGrid::LayOut() {
    bars_.clear();
    more_.clear();
    const int rows = view_.Grid().Rows();
    std::vector<int> lanes(static_cast<size_t>(rows), 0);
    for (const BarPiece& piece : view_.Bars()) {
        int& most = lanes[static_cast<size_t>(piece.row)];
        most = std::max(most, piece.lane + 1);
    }
    const std::vector<int> heights = HeightsFor(lanes);
    rowTops_.assign(1, HeaderHeight());
    for (const int height : heights)
        rowTops_.push_back(rowTops_.back() + height);
    for (int row = 0; row < rows; ++row)
        LayOutRow(row, lanes[static_cast<size_t>(row)]);
}

/// Rows are of one height, but for those that need more: they take it of what others have to spare.
std::vector<int> CalendarGrid::HeightsFor(const std::vector<int>& lanes) const {
    const int rows = static_cast<int>(lanes.size()), room = std::max(height() - HeaderHeight(), rows);
    const int equal = room / rows, step = BarHeight() + kGap;
    std::vector<int> needs;
    needs.reserve(lanes.size());
    for (const int count : lanes)
        needs.push_back(DayLine() + std::max(count, kFewestRows) * step + kGap);
    int wanted = 0, spare = 0;
    for (const int need : needs) {
        wanted += std::max(need - equal, 0);
        spare += std::max(equal - need, 0);
    }
    const int moved = std::min(wanted, spare);
    std::vector<int> heights;
    for (const int need : needs) {
        const int change = need > equal ? (need - equal) * moved / std::max(wanted, 1)
                                        : -((equal - need) * moved / std::max(spare, 1));
        heights.push_back(equal + change);
    }
    heights.back() += room - std::accumulate(heights.begin(), heights.end(), 0);
    return heights;
}

/// How many bars of each day of a row lie below the lanes that are shown.
std::vector<int> CalendarGrid::BarsBeyond(int row, int shown) const {
    std::vector<int> counts(kColumns, 0);
    for (const BarPiece& piece : view_.Bars())
        for (int column = piece.firstColumn; piece.row == row && piece.lane >= shown && column <= piece.lastColumn;
             ++column)
            ++counts[static_cast<size_t>(column)];
    return counts;
}

void CalendarGrid::LayOutRow(int row, int lanes) {
    const int step = BarHeight() + kGap;
    const int top = rowTops_[static_cast<size_t>(row)], bottom = rowTops_[static_cast<size_t>(row) + 1];
    const int fitting = std::max((bottom - top - DayLine() - kGap) / step, 1);
    const int shown = lanes <= fitting ? lanes : fitting - 1;
    const std::vector<int> beyond = BarsBeyond(row, shown);
    std::vector<int> hidden(kColumns, 0);
    for (const BarPiece& piece : view_.Bars()) {
        if (piece.row != row)
            continue;
        // A bar that is all that its days have beyond the others takes the line that would count it.
        const bool isAlone = std::all_of(beyond.begin() + piece.firstColumn, beyond.begin() + piece.lastColumn + 1,
                                         [](int count) { return count == 1; });
        const QRect left = CellRect(row * kColumns + piece.firstColumn),
                    right = CellRect(row * kColumns + piece.lastColumn);
        if (piece.lane < shown || isAlone) {
            const int from = left.left() + (piece.roundLeft ? kGap : 0),
                      to = right.right() - (piece.roundRight ? kGap : 0);
            bars_.push_back(
                {QRect(from, top + DayLine() + std::min(piece.lane, shown) * step, to - from + 1, BarHeight()),
                 &piece});
            continue;
        }
        for (int column = piece.firstColumn; column <= piece.lastColumn; ++column)
            ++hidden[static_cast<size_t>(column)];
    }
    for (int column = 0; column < kColumns; ++column) {
        const QRect cell = CellRect(row * kColumns + column);
        if (const int count = hidden[static_cast<size_t>(column)]; count > 0)
            more_.push_back(
                {QRect(cell.left() + kGap, top + DayLine() + shown * step, cell.width() - 2 * kGap, BarHeight()),
                 row * kColumns + column, count});
    }
}

QRect CalendarGrid::CellRect(int cell) const {
    const int row = cell / kColumns, column = cell % kColumns;
    if (cell < 0 || static_cast<size_t>(row) + 1 >= rowTops_.size())
        return {};
    const auto left = [&](int at) {
        return isRightToLeft() ? width() * (kColumns - at) / kColumns : width() * at / kColumns;
    };
    const int from = std::min(left(column), left(column + 1)), to = std::max(left(column), left(column + 1));
    const int top = rowTops_[static_cast<size_t>(row)];
    return QRect(from, top, to - from, rowTops_[static_cast<size_t>(row) + 1] - top);
}

int CalendarGrid::CellAt(const QPoint& point) const {
    for (int cell = 0; cell < view_.Grid().Cells(); ++cell) {
        if (CellRect(cell).contains(point))
            return cell;
    }
    return -1;
}

std::optional<size_t> CalendarGrid::EventAt(const QPoint& point) const {
    const auto bar = std::find_if(bars_.begin(), bars_.end(), [&](const Bar& one) { return one.rect.contains(point); });
    return bar == bars_.end() ? std::nullopt : std::optional(bar->piece->event);
}

int CalendarGrid::MoreAt(const QPoint& point) const {
    const auto more =
        std::find_if(more_.begin(), more_.end(), [&](const More& one) { return one.rect.contains(point); });
    return more == more_.end() ? -1 : more->cell;
}

void CalendarGrid::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), theme_.Color(ColorRole::Window));
    painter.setFont(theme_.Font(TextSize::Small));
    painter.setPen(theme_.Color(ColorRole::DimText));
    for (int column = 0; column < kColumns; ++column) {
        const QRect cell = CellRect(column);
        const QRect head(cell.left(), 0, cell.width(), HeaderHeight());
        const QString day = painter.fontMetrics().horizontalAdvance("Wednesday") + kSpace * 2 > cell.width()
                                ? QString::fromLatin1(kDays[column]).left(3)
                                : QString::fromLatin1(kDays[column]);
        painter.drawText(head, Qt::AlignCenter, day);
    }
    for (int cell = 0; cell < view_.Grid().Cells(); ++cell)
        PaintCell(painter, cell);
    for (const Bar& bar : bars_)
        PaintBar(painter, bar);
    painter.setPen(theme_.Color(ColorRole::Text));
    for (const More& more : more_)
        painter.drawText(more.rect.adjusted(kTextLeft - kGap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeading,
                         tr("+%1 more").arg(more.count));
    painter.setPen(QPen(theme_.Color(ColorRole::Accent), hasFocus() ? 2 : 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(CellRect(view_.CurrentCell())).adjusted(1, 1, -1, -1), kControlRadius,
                            kControlRadius);
}

void CalendarGrid::PaintCell(QPainter& painter, int cell) const {
    const QRect rect = CellRect(cell);
    const bool inMonth = view_.Grid().IsInMonth(cell), isToday = view_.Grid().DayOf(cell) == view_.Today();
    const bool isSelected = view_.IsSelected(cell);
    painter.fillRect(rect, theme_.Color(isSelected ? ColorRole::Selection
                                        : inMonth  ? ColorRole::Card
                                                   : ColorRole::Window));
    painter.setPen(theme_.Color(ColorRole::FaintEdge));
    painter.drawRect(QRectF(rect).adjusted(0.5, 0.5, 0.5, 0.5));
    QFont font = theme_.Font(TextSize::Body);
    font.setBold(isToday);
    painter.setFont(font);
    const QString number = QString::number(view_.Grid().DayOf(cell).Day());
    const int side = painter.fontMetrics().height() + kSpace;
    QRect place(rect.left() + kSpace, rect.top() + kGap,
                std::max(side, painter.fontMetrics().horizontalAdvance(number)), side);
    ColorRole role = isSelected ? ColorRole::SelectionText : inMonth ? ColorRole::Text : ColorRole::DimText;
    if (isToday) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme_.Color(ColorRole::Accent));
        painter.drawEllipse(place);
        painter.setBrush(Qt::NoBrush);
        role = ColorRole::AccentText;
    }
    painter.setPen(theme_.Color(role));
    painter.drawText(place, Qt::AlignCenter, number);
    painter.setFont(theme_.Font(TextSize::Small));
    if (const int reminders = view_.RemindersOn(cell); reminders > 0) {
        const QPixmap bell = theme_.IconPixmap("bell", isSelected ? ColorRole::SelectionText : ColorRole::DimText,
                                               painter.fontMetrics().height(), devicePixelRatioF());
        painter.drawPixmap(rect.right() - kSpace - painter.fontMetrics().height(), rect.top() + kSpace, bell);
    }
}

void CalendarGrid::PaintBar(QPainter& painter, const Bar& bar) const {
    const CTmEvent& event = view_.Events()[bar.piece->event];
    QColor color = ToQColor(BarColorOf(event.BarColor).color);
    painter.setBrush(color);
    const bool lit = highlighted_ == bar.piece->event;
    painter.setPen(lit ? QPen(theme_.Color(ColorRole::Text), 2) : QPen(Qt::NoPen));
    painter.drawPath(BarShape(QRectF(bar.rect), bar.piece->roundLeft, bar.piece->roundRight));
    painter.setPen(Qt::white);
    QRect text = bar.rect.adjusted(kTextLeft, 0, -kTextRight, 0);
    if (bar.piece->goesOn) {
        const int room = std::max(kMarkRoom, painter.fontMetrics().horizontalAdvance(">>>"));
        painter.drawText(bar.rect.adjusted(bar.rect.width() - room - kGap, 0, -kGap, 0),
                         Qt::AlignVCenter | Qt::AlignRight, ">>>");
        text.setRight(text.right() - room);
    }
    const QString shown = ToQString(bar.piece->text).simplified();
    painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(shown, Qt::ElideRight, text.width()));
}

}  // namespace lore
