#include "calendar/month_grid.h"

#include <algorithm>
#include <tuple>

#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"

namespace lore {

namespace {

constexpr int kFriday = 6, kSaturday = 7;
constexpr int kBefore = -100000;

/// An event's place among the cells, which may reach over both ends.
struct Place {
    size_t event;
    int first, last;
};

std::vector<Place> PlacesOf(const MonthGrid& grid, const EventList& events) {
    std::vector<Place> places;
    for (size_t i = 0; i < events.size(); ++i) {
        if (!events[i].Start.IsValid())
            continue;
        const int first = grid.CellOf(events[i].Start);
        const int last = std::max(first, events[i].End.IsValid() ? grid.CellOf(events[i].End) : first);
        if (last >= 0 && first < grid.Cells())
            places.push_back({i, first, last});
    }
    const auto order = [&](const Place& place) {
        const CTmEvent& event = events[place.event];
        return std::tuple(place.first, -place.last, event.AllDay != 1, event.Start.Seconds());
    };
    std::stable_sort(places.begin(), places.end(), [&](const Place& a, const Place& b) { return order(a) < order(b); });
    return places;
}

/// The lowest lane that is free over some columns, which it takes.
int TakeLane(std::vector<unsigned>& lanes, int firstColumn, int lastColumn) {
    const unsigned columns = ((1u << (lastColumn - firstColumn + 1)) - 1) << firstColumn;
    const auto lane = std::find_if(lanes.begin(), lanes.end(), [&](unsigned taken) { return (taken & columns) == 0; });
    const auto number = lane - lanes.begin();
    if (lane == lanes.end())
        lanes.push_back(0);
    lanes[static_cast<size_t>(number)] |= columns;
    return static_cast<int>(number);
}

}  // namespace

MonthGrid::MonthGrid(const DateTime& date) : month_(date.Year(), date.Month(), 1) {
    const int weekday = month_.DayOfWeek(), days = DaysInMonth(month_.Year(), month_.Month());
    first_ = month_.PlusDays(1 - weekday);
    const bool needsSix = (weekday >= kFriday && days == 31) || (weekday == kSaturday && days == 30);
    rows_ = needsSix ? 6 : 5;
}

bool MonthGrid::IsInMonth(int cell) const {
    const DateTime day = DayOf(cell);
    return day.Year() == month_.Year() && day.Month() == month_.Month();
}

int MonthGrid::CellOf(const DateTime& date) const {
    const DateSpan span = SpanBetween(first_, date.Midnight());
    return span.status == DateTime::Status::Valid ? static_cast<int>(span.WholeDays()) : kBefore;
}

std::vector<BarPiece> LayOutBars(const MonthGrid& grid, const EventList& events) {
    const std::vector<Place> places = PlacesOf(grid, events);
    std::vector<BarPiece> pieces;
    for (int row = 0; row < grid.Rows(); ++row) {
        const int begin = row * MonthGrid::kColumns, end = begin + MonthGrid::kColumns - 1;
        std::vector<unsigned> lanes;
        for (const Place& place : places) {
            if (place.last < begin || place.first > end)
                continue;
            const CTmEvent& event = events[place.event];
            BarPiece& piece = pieces.emplace_back();
            piece.event = place.event;
            piece.row = row;
            piece.firstColumn = std::max(place.first, begin) - begin;
            piece.lastColumn = std::min(place.last, end) - begin;
            piece.lane = TakeLane(lanes, piece.firstColumn, piece.lastColumn);
            piece.roundLeft = place.first >= begin;
            piece.roundRight = place.last <= end;
            piece.goesOn = row == grid.Rows() - 1 && place.last > end;
            piece.text = std::max(place.first, 0) >= begin ? BarText(event) : event.Label;
        }
    }
    return pieces;
}

}  // namespace lore
