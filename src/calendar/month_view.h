#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "calendar/calendar_world.h"
#include "calendar/month_grid.h"

namespace lore {

/// The month of the calendar window: its cells, what falls on them, and the selection.
class MonthView {
public:
    /// Years whose months have all their cells, those of the neighbours too.
    static constexpr int kFirstYear = 101, kLastYear = 9998;

    /// Shows the month of today, which is selected. The world outlives the view.
    explicit MonthView(const CalendarWorld& world);

    const MonthGrid& Grid() const { return grid_; }
    const DateTime& Today() const { return today_; }
    const EventList& Events() const { return events_; }
    const std::vector<BarPiece>& Bars() const { return bars_; }

    /// Reads the events and reminders of the shown cells again.
    void Reload();
    /// Shows another month of these years. The selection goes to its first day.
    void ShowMonth(const DateTime& month);
    /// So many months on.
    void TurnMonths(int months);

    // The selection runs from its anchor to its end, in either direction.
    void Select(int cell);
    void ExtendTo(int cell);
    /// Moves the end of the selection by days; out of the shown cells it turns to that month.
    void MoveBy(int days, bool extend);
    void SelectDay(const DateTime& day);
    /// Of the clock as it is by now, which may have passed midnight.
    void SelectToday();
    bool IsSelected(int cell) const;
    int CurrentCell() const { return end_; }
    DateTime CurrentDay() const { return grid_.DayOf(end_); }
    std::pair<DateTime, DateTime> SelectedDays() const;

    /// The events that a cell shows, in the order of their bars.
    std::vector<size_t> EventsOn(int cell) const;
    int RemindersOn(int cell) const;
    /// "Monday, January 03 2011, today, 2 events, 1 reminder: 9:05AM - Class; Trip"
    std::string CellText(int cell) const;

private:
    const CalendarWorld& world_;
    DateTime today_;
    MonthGrid grid_;
    EventList events_;
    std::vector<int> reminders_;  // by cell
    std::vector<BarPiece> bars_;
    int anchor_ = 0, end_ = 0;
};

}  // namespace lore
