#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <utility>

#include "ui/calendar/calendar_grid.h"
#include "ui/calendar/event_tool_tip.h"
#include "ui/look/focus_child.h"

namespace lore {

namespace {

constexpr int kWeek = MonthGrid::kColumns;
constexpr int kWheelStep = 120;

}  // namespace

void CalendarGrid::resizeEvent(QResizeEvent*) {
    LayOut();
}

void CalendarGrid::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        Refresh();
    QWidget::changeEvent(event);
}

void CalendarGrid::Moved(const DateTime& before) {
    if (view_.Grid().Month() == before) {
        update();
    } else {
        Refresh();
        emit MonthTurned();
    }
    TellFocusChild(*this, view_.CurrentCell());
    TellSelection();
}

void CalendarGrid::TellSelection() {
    told_.resize(static_cast<size_t>(view_.Grid().Cells()));
    for (size_t cell = 0; cell < told_.size(); ++cell) {
        const bool isSelected = view_.IsSelected(static_cast<int>(cell));
        if (told_[cell] != isSelected)
            TellSelected(*this, static_cast<int>(cell), isSelected);
        told_[cell] = isSelected;
    }
}

void CalendarGrid::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    TellFocusChildSoon(*this);
}

void CalendarGrid::keyPressEvent(QKeyEvent* event) {
    const DateTime before = view_.Grid().Month();
    const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
    const int forward = isRightToLeft() ? -1 : 1, column = view_.CurrentCell() % kWeek;
    switch (event->key()) {
        case Qt::Key_Left:
            view_.MoveBy(-forward, extend);
            break;
        case Qt::Key_Right:
            view_.MoveBy(forward, extend);
            break;
        case Qt::Key_Up:
            view_.MoveBy(-kWeek, extend);
            break;
        case Qt::Key_Down:
            view_.MoveBy(kWeek, extend);
            break;
        case Qt::Key_Home:
            if (event->modifiers().testFlag(Qt::ControlModifier)) {
                view_.SelectToday();
                Refresh();
            } else {
                view_.MoveBy(-column, extend);
            }
            break;
        case Qt::Key_End:
            view_.MoveBy(kWeek - 1 - column, extend);
            break;
        case Qt::Key_PageUp:
            view_.TurnMonths(-1);
            break;
        case Qt::Key_PageDown:
            view_.TurnMonths(1);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            if (event->modifiers().testFlag(Qt::ControlModifier))
                return event->ignore();
            emit DayAsked(view_.CurrentDay());
            return;
        default:
            return QWidget::keyPressEvent(event);
    }
    Moved(before);
    QRect shown = CellRect(view_.CurrentCell());
    if (view_.CurrentCell() < kWeek)
        shown.setTop(0);  // with the names of the days
    emit KeysMoved(shown);
}

void CalendarGrid::mousePressEvent(QMouseEvent* event) {
    const int cell = CellAt(event->position().toPoint());
    if (cell < 0)
        return;
    const bool keeps = event->button() == Qt::RightButton && view_.IsSelected(cell);
    pressedMore_ = event->button() == Qt::LeftButton ? MoreAt(event->position().toPoint()) : -1;
    highlighted_ = EventAt(event->position().toPoint());
    if (event->modifiers().testFlag(Qt::ShiftModifier))
        view_.ExtendTo(cell);
    else if (!keeps)
        view_.Select(cell);
    Moved(view_.Grid().Month());
}

void CalendarGrid::mouseReleaseEvent(QMouseEvent* event) {
    const int pressed = std::exchange(pressedMore_, -1);
    if (pressed >= 0 && event->button() == Qt::LeftButton && MoreAt(event->position().toPoint()) == pressed)
        emit DayAsked(view_.Grid().DayOf(pressed));
}

void CalendarGrid::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        setCursor(MoreAt(event->position().toPoint()) >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
        return;
    }
    if (const int cell = CellAt(event->position().toPoint()); cell >= 0 && cell != view_.CurrentCell()) {
        view_.ExtendTo(cell);
        Moved(view_.Grid().Month());
    }
}

void CalendarGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (event->button() != Qt::LeftButton)
        return;
    if (const std::optional<size_t> hit = EventAt(point))
        emit EventAsked(*hit);
    else if (const int cell = CellAt(point); cell >= 0 && MoreAt(point) < 0)
        emit DayAsked(view_.Grid().DayOf(cell));
}

void CalendarGrid::wheelEvent(QWheelEvent* event) {
    wheel_ += event->angleDelta().y();
    const DateTime before = view_.Grid().Month();
    if (const int steps = wheel_ / kWheelStep; steps != 0) {
        wheel_ %= kWheelStep;
        view_.TurnMonths(-steps);
        Moved(before);
    }
    event->accept();
}

void CalendarGrid::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Mouse) {
        emit MenuAsked(mapToGlobal(CellRect(view_.CurrentCell()).center()), view_.CurrentDay(),
                       view_.EventsOn(view_.CurrentCell()));
        return;
    }
    const std::optional<size_t> hit = EventAt(event->pos());
    const int cell = CellAt(event->pos());
    emit MenuAsked(event->globalPos(), cell < 0 ? view_.CurrentDay() : view_.Grid().DayOf(cell),
                   hit ? std::vector{*hit} : std::vector<size_t>());
}

bool CalendarGrid::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        if (const std::optional<size_t> hit = EventAt(help->pos()))
            QToolTip::showText(help->globalPos(), EventToolTip(view_.Events()[*hit]), this);
        else
            QToolTip::hideText();
        return true;
    }
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::event(event);
}

}  // namespace lore
