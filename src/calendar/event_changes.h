#pragma once

#include <optional>
#include <utility>

#include "calendar/calendar_world.h"

namespace lore {

/// What became of a save of an event.
enum class EventSave {
    Saved,
    Cancelled,   ///< the user took the change back at the question; all is as it was
    Refused,     ///< told: the series would have no event; all is as it was
    NotWritten,  ///< told as a fault: the events are as they were, and can be saved again
};

/// A new event for the editor: from the first day at its date to the end of the last one, all day; without days it is
/// today. The bounds of a series begin as its start.
CTmEvent EventForDays(const CalendarWorld& world, const std::optional<std::pair<DateTime, DateTime>>& days);

/// Saves an event that was made: with its reminders, and expanded if it is a series.
EventSave CreateEvent(const CalendarWorld& world, const CTmEvent& event);

/// Saves a change of an event. Where the event stays in its series, the user is asked how far the change reaches: a
/// change of schedule replaces the records of the series, one of texts, colour or reminders walks over them.
/// @param old the event as it was
EventSave EditEvent(const CalendarWorld& world, const CTmEvent& event, CTmEvent old);

// Removal, each with its question. True if the events have gone; a file that can't be read or written keeps them.

/// Removes one event of a series. The others keep their bounds.
bool DeleteSingleEvent(const CalendarWorld& world, const CTmEvent& event);
/// Removes an event and all later ones of its series; the rest of the series ends on the day before it.
bool DeleteFollowingEvents(const CalendarWorld& world, const CTmEvent& event);
bool DeleteEntireSeries(const CalendarWorld& world, const CTmEvent& event);
/// Removes an event that isn't part of a series.
bool DeleteEvent(const CalendarWorld& world, const CTmEvent& event);

}  // namespace lore
