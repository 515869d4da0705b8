#include "calendar/event_list.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>

#include "calendar/date_arithmetic.h"

namespace lore {

namespace {

using EventIndex = std::unordered_map<std::string, size_t>;

EventIndex IndexById(const EventList& list, size_t growth) {
    EventIndex index;
    index.reserve(list.size() + growth);
    for (size_t i = 0; i < list.size(); ++i)
        index.emplace(list[i].EventId, i);
    return index;
}

bool IsInSeries(const CTmEvent& event, std::string_view seriesId) {
    return !seriesId.empty() && event.SeriesId == seriesId;
}

/// Moves the events that a test finds out of the list. Each is tested once, in list order.
template <typename Test>
EventList TakeOut(EventList& list, Test test) {
    EventList kept, taken;
    kept.reserve(list.size());
    for (CTmEvent& event : list)
        (test(event) ? taken : kept).push_back(std::move(event));
    list = std::move(kept);
    return taken;
}

/// Removes what starts at or after an event, and the event itself; the rest of the series ends on the day before.
EventList CutSeries(EventList& list, const std::string& seriesId, const std::string& eventId, const DateTime& start) {
    bool foundEvent = false;
    EventList removed = TakeOut(list, [&](const CTmEvent& event) {
        if (!foundEvent && event.EventId == eventId)
            return foundEvent = true;
        return IsInSeries(event, seriesId) && start.IsEarlierOrEqual(event.Start);
    });
    const DateTime lastDay = start.Midnight().PlusDays(-1);
    for (CTmEvent& event : list) {
        if (IsInSeries(event, seriesId))
            event.RecurrenceEnd = lastDay;
    }
    return removed;
}

}  // namespace

bool ReplaceEvent(EventList& list, const CTmEvent& event) {
    const int position = FindEventIndex(list, event.EventId);
    if (position < 0)
        return false;
    list[static_cast<size_t>(position)] = event;
    return true;
}

void ReplaceEvents(EventList& list, const EventList& events) {
    const EventIndex index = IndexById(list, 0);
    for (const CTmEvent& event : events) {
        if (const auto found = index.find(event.EventId); found != index.end())
            list[found->second] = event;
    }
}

void MergeEvents(EventList& list, const EventList& events, const std::function<void()>& step) {
    EventIndex index = IndexById(list, events.size());
    for (const CTmEvent& event : events) {
        const auto [found, isNew] = index.emplace(event.EventId, list.size());
        if (isNew)
            list.push_back(event);
        else
            list[found->second] = event;
        if (step)
            step();
    }
}

bool RemoveEvent(EventList& list, std::string_view eventId) {
    const int position = FindEventIndex(list, eventId);
    if (position < 0)
        return false;
    list.erase(list.begin() + position);
    return true;
}

int FindEventIndex(const EventList& list, std::string_view eventId) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const CTmEvent& e) { return e.EventId == eventId; });
    return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

EventList SelectSeries(const EventList& list, std::string_view seriesId, const CTmEvent* from) {
    EventList result;
    if (from)
        result.push_back(*from);
    std::copy_if(list.begin(), list.end(), std::back_inserter(result), [&](const CTmEvent& event) {
        // The list may hold the event itself at the later start that it had before a change.
        return IsInSeries(event, seriesId) &&
               (!from || (event.EventId != from->EventId && IsLater(event.Start, from->Start)));
    });
    return result;
}

EventList RemoveSeries(EventList& list, std::string_view seriesId, const CTmEvent* from) {
    // Copies, since the arguments may stand in the list itself.
    const std::string series(seriesId);
    if (from)
        return CutSeries(list, series, std::string(from->EventId), DateTime(from->Start));
    return TakeOut(list, [&](const CTmEvent& event) { return IsInSeries(event, series); });
}

EventList SelectByDate(const EventList& list, const DateTime& date) {
    EventList result;
    if (!date.IsValid())
        return result;
    const DateTime first = date.Midnight();
    const DateTime last(date.Year(), date.Month(), date.Day(), 23, 59, 59);
    const auto isInside = [&](const DateTime& moment) {
        return first.IsEarlierOrEqual(moment) && moment.IsEarlierOrEqual(last);
    };
    std::copy_if(list.begin(), list.end(), std::back_inserter(result), [&](const CTmEvent& event) {
        return isInside(event.Start) || isInside(event.End) ||
               (IsLater(first, event.Start) && IsLater(event.End, last));
    });
    return result;
}

}  // namespace lore
