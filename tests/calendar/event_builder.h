#pragma once

#include <string>

#include "calendar/event_list.h"

namespace lore {

inline DateTime Day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return DateTime(year, month, day, hour, minute, second);
}

inline DateTime AtHour(const DateTime& day, int hour, int minute, int second) {
    return DateTime(day.Year(), day.Month(), day.Day(), hour, minute, second);
}

inline CTmEvent Event(const std::string& id, const std::string& series, const DateTime& start, const DateTime& end) {
    CTmEvent event;
    ResetEvent(event, start);
    event.End = end;
    event.EventId = id;
    event.SeriesId = series;
    return event;
}

/// A series over one pattern list, with events from 9:05 to 10:00.
inline CTmEvent Series(int32_t type, LongList pattern, const DateTime& first, const DateTime& last) {
    CTmEvent event = Event("{E}", "", AtHour(first, 9, 5, 0), AtHour(first, 10, 0, 59));
    event.Recurring = 1;
    event.RecurrenceType = type;
    event.RecurrenceStart = first;
    event.RecurrenceEnd = last;
    event.*kPatternLists[static_cast<size_t>(type)].list = std::move(pattern);
    return event;
}

/// "{a} {b}": the ids of a list in order.
inline std::string Ids(const EventList& list) {
    std::string ids;
    for (const CTmEvent& event : list)
        ids += (ids.empty() ? "" : " ") + event.EventId;
    return ids;
}

}  // namespace lore
