#pragma once

#include <vector>

#include "calendar/event_list.h"

namespace lore {

/// The most records that one series is expanded to.
inline constexpr size_t kMostOccurrences = 100000;

/// One date of a series.
struct Occurrence {
    DateTime start;  ///< invalid if the event's Start is
    DateTime end;    ///< invalid if the event's Start or End is

    bool operator==(const Occurrence&) const = default;
};

/// The dates of a series in their order, bounded whatever a file asks for.
struct DatesOfSeries {
    std::vector<Occurrence> dates;
    bool isCut = false;  ///< there are more than kMostOccurrences; these are left out
};

/// The dates of a series, from RecurrenceStart to RecurrenceEnd inclusive by full date and time, each with the event's
/// times of day and its span of days. A step to a date that doesn't exist ends the series: one on the 31st ends before
/// the first shorter month. A step by fewer than one day, week or month ends it too. Empty unless Recurring is 1.
DatesOfSeries SeriesDates(const CTmEvent& event);

/// A series that was cut ends with a midnight, and one that goes on from an event moved to a later hour ends before it:
/// the event of the last day hasn't begun then. Before the series is expanded anew, such an end gets the time of day of
/// its start, so that this event stays. A later end stays as it is.
void KeepLastDay(CTmEvent& event);

/// What stands in the file for a series.
struct ExpandedSeries {
    EventList records;
    bool isCut = false;  ///< there are more dates than a series can have
};

/// One record for each date of the series: copies of the event, its reminders included, with ids of their own and a new
/// common SeriesId.
ExpandedSeries ExpandSeries(const CTmEvent& event, GuidSource& guids);

/// Which one of its weekday a date is in its month, from 0; with `wantLast` the last one gives 4. -1 unless valid.
int NthWeekdayIndex(const DateTime& date, bool wantLast);

}  // namespace lore
