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

/// The dates of a series, from RecurrenceStart to RecurrenceEnd inclusive by full date and time, each with the event's
/// times of day and its span of days. A step to a date that doesn't exist ends the series: one on the 31st ends before
/// the first shorter month. A step by fewer than one day, week or month ends it too. Empty unless Recurring is 1.
/// `isCut`, which may be null, tells whether there are more dates than kMostOccurrences; these are left out.
std::vector<Occurrence> SeriesDates(const CTmEvent& event, bool* isCut = nullptr);

/// A series that was cut ends with a midnight, and one that goes on from an event moved to a later hour ends before it:
/// the event of the last day hasn't begun then. Before the series is expanded anew, such an end gets the time of day of
/// its start, so that this event stays. A later end stays as it is.
void KeepLastDay(CTmEvent& event);

/// One record for each date of the series: copies of the event, its reminders included, with ids of their own and a new
/// common SeriesId. `isCut` as above.
EventList ExpandSeries(const CTmEvent& event, GuidSource& guids, bool* isCut = nullptr);

/// Which one of its weekday a date is in its month, from 0; with `wantLast` the last one gives 4. -1 unless valid.
int NthWeekdayIndex(const DateTime& date, bool wantLast);

}  // namespace lore
