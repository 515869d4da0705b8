#pragma once

#include <string>
#include <vector>

#include "calendar/event_list.h"

namespace lore {

/// The cells of a month, from the first visible Sunday to the last visible Saturday, seven to a row.
class MonthGrid {
public:
    static constexpr int kColumns = 7;

    /// Of the month that a date lies in.
    explicit MonthGrid(const DateTime& date);

    const DateTime& Month() const { return month_; }  ///< on its first
    int Rows() const { return rows_; }
    int Cells() const { return rows_ * kColumns; }
    DateTime DayOf(int cell) const { return first_.PlusDays(cell); }
    DateTime FirstMoment() const { return first_; }
    DateTime LastMoment() const { return first_.PlusDays(Cells()).PlusSeconds(-1); }
    /// Whether a cell belongs to the month itself.
    bool IsInMonth(int cell) const;
    /// The cell of a date; below 0 before the first one, at or above Cells() after the last. Below 0 unless valid.
    int CellOf(const DateTime& date) const;

private:
    DateTime month_, first_;
    int rows_;
};

/// The bar of an event in one row that it touches.
struct BarPiece {
    size_t event = 0;  ///< position in the list of events
    int row = 0, firstColumn = 0, lastColumn = 0;
    int lane = 0;  ///< place below the other bars of its row, from 0
    bool roundLeft = false, roundRight = false;
    bool goesOn = false;  ///< past the last visible cell: ">>>" stands at its end
    std::string text;
};

/// The bars of the events that meet a cell, by row and lane. Earlier ones lie above, of one day the longer ones.
std::vector<BarPiece> LayOutBars(const MonthGrid& grid, const EventList& events);

}  // namespace lore
