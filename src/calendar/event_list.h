#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "calendar/event.h"

namespace lore {

using EventList = std::vector<CTmEvent>;

// Ids are compared exactly. Where a list holds an id twice, the first event with it is meant. An empty series id is no
// series: it selects and removes nothing.

/// Overwrites the event with the same id; false if there is none.
bool ReplaceEvent(EventList& list, const CTmEvent& event);
/// ReplaceEvent for each event of the second list; those without a match are dropped. Linear in both lists.
void ReplaceEvents(EventList& list, const EventList& events);
/// ReplaceEvent for each event of the second list; those without a match are appended. Linear in both lists.
/// @param step called after each event, if given
void MergeEvents(EventList& list, const EventList& events, const std::function<void()>& step = {});
/// Removes the first event with this id; false if there is none.
bool RemoveEvent(EventList& list, std::string_view eventId);
/// The position, or -1.
int FindEventIndex(const EventList& list, std::string_view eventId);

/// The events of a series in list order; with `from`, a copy of it and then the others that start later.
EventList SelectSeries(const EventList& list, std::string_view seriesId, const CTmEvent* from = nullptr);
/// Removes a series. With `from` it is cut: the events that start at or after it go, and so does the event of its id;
/// the rest of the series ends at the midnight of the day before it.
/// @return what was removed, in list order
EventList RemoveSeries(EventList& list, std::string_view seriesId, const CTmEvent* from = nullptr);

/// The events that start or end on a day, or run over the whole of it; none for a date that isn't valid.
EventList SelectByDate(const EventList& list, const DateTime& date);

}  // namespace lore
