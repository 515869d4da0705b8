#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "calendar/month_view.h"

namespace lore {

class Theme;

/// The grid of a month: a cell for each day, with the bars of its events. It works on the model and asks for what
/// opens.
class CalendarGrid : public QWidget {
    Q_OBJECT

public:
    /// The line "+3 more" of a cell whose bars don't all fit. A click on it asks for the day.
    struct More {
        QRect rect;
        int cell, count;
    };

    CalendarGrid(MonthView& view, const Theme& theme, QWidget* parent);

    /// After a change of the model from outside.
    void Refresh();
    const MonthView& View() const { return view_; }
    QRect CellRect(int cell) const;
    /// The cell at a point, -1 for none.
    int CellAt(const QPoint& point) const;
    /// The event whose bar is at a point.
    std::optional<size_t> EventAt(const QPoint& point) const;
    const std::vector<More>& Mores() const { return more_; }
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

signals:
    void DayAsked(const DateTime& day);
    void EventAsked(size_t event);
    /// @param day the one under the mouse, which may be any of those selected, or the current one where the keyboard
    /// asks
    /// @param events positions in the model's list: the event under the mouse, or all of the current day where the
    /// keyboard asks
    void MenuAsked(const QPoint& global, const DateTime& day, const std::vector<size_t>& events);
    void MonthTurned();
    /// Keys have moved to a day, which is to be in sight.
    void KeysMoved(const QRect& shown);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Bar {
        QRect rect;
        const BarPiece* piece;
    };
    void LayOut();
    std::vector<int> HeightsFor(const std::vector<int>& lanes) const;
    std::vector<int> BarsBeyond(int row, int shown) const;
    void LayOutRow(int row, int lanes);
    /// The cell whose line "+3 more" is at a point, -1 for none.
    int MoreAt(const QPoint& point) const;
    void Moved(const DateTime& before);
    void TellSelection();
    void PaintCell(QPainter& painter, int cell) const;
    void PaintBar(QPainter& painter, const Bar& bar) const;
    /// Each cell with so many characters in a line, and so many bars.
    QSize SizeFor(int chars, int bars) const;
    int HeaderHeight() const;
    int DayLine() const;
    int BarHeight() const;

    MonthView& view_;
    const Theme& theme_;
    std::vector<int> rowTops_;  // one more than rows
    std::vector<Bar> bars_;
    std::vector<More> more_;
    std::optional<size_t> highlighted_;
    std::vector<bool> told_;  // the cells that screen readers know as selected
    int wheel_ = 0;
    int pressedMore_ = -1;
};

}  // namespace lore
