#pragma once

#include <string>

#include "calendar/calendar_world.h"

namespace lore {

// The reminders of events, in Rem.dat and on the server. Failures of the server are told in messages, those of the file
// as faults; neither undoes a change of the events.

/// The most reminders that an event has.
inline constexpr size_t kMostReminders = 4;

/// Makes the reminders of an event that was made from another one: those of `source`, with ids of their own, at the
/// same span before the start.
void CopyReminders(const CTmEvent& source, CTmEvent& target, GuidSource& guids);

/// A reminder that counts from the start of its event moves with it.
void FollowStart(CTmReminder& reminder, const DateTime& start);

/// Creates the reminders of a new series, all of one list. Those that the server didn't take are dropped.
void CreateSeriesReminders(const CalendarWorld& world, ReminderList reminders);

/// Brings the reminders of one event to those that it holds. Afterwards it holds what stands in the file.
void UpdateEventReminders(const CalendarWorld& world, CTmEvent& event, bool showProgress);

/// How an update of the events of a series stands with the server.
struct ServerRun {
    bool connected = false;
    bool inVain = false;    ///< not connected, though the user has tried again
    bool succeeded = true;  ///< turned false by an operation that failed, or was left out in vain
};
/// Brings the reminders of `event`, a member of a series, to those of `changed`, the member that the user edited: what
/// is the same across events stays, the rest goes, what is missing is made.
void UpdateSeriesEventReminders(const CalendarWorld& world, CTmEvent& event, const CTmEvent& changed,
                                const std::string& progressText, ServerRun& run);

/// Removes the reminders of a single event.
void RemoveEventReminders(const CalendarWorld& world, CTmEvent& event, bool showReport);
/// Removes the reminders of many events, with a server or without.
void RemoveRemindersOfEvents(const CalendarWorld& world, const EventList& events, bool showReport);

/// The reminders of an event as the file holds them; none if it can't be read.
ReminderList StoredReminders(const CalendarWorld& world, const std::string& eventId);

}  // namespace lore
