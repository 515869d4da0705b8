#pragma once

#include <functional>
#include <span>
#include <string>

#include "calendar/calendar_world.h"

namespace lore {

// The reminders of events, in Rem.dat and on the server. Failures of the server are told in messages, those of the file
// as faults. Neither undoes a change of the events, but a deletion whose reminders can't be taken out of the file isn't
// made at all.

/// The most reminders that an event has.
inline constexpr size_t kMostReminders = 4;

/// A reminder for another event, with an id of its own, at the same span before its start. A span that can't be told
/// gives the start itself.
CTmReminder CopyReminder(const CTmReminder& reminder, const CTmEvent& event, GuidSource& guids);
/// Makes the reminders of an event that was made from another one: copies of those of `source`.
void CopyReminders(const CTmEvent& source, CTmEvent& target, GuidSource& guids);

/// A reminder that counts from the start of its event moves with it.
void FollowStart(CTmReminder& reminder, const DateTime& start);

/// Lets the reminders of a list say the title and text of their events, as far as these are among `events`, and those
/// at a time of their own the start too, but not in a series, where the span to it tells which reminders of two events
/// are the same; the others follow with their time. The server knows nothing of this. True if any said something else.
bool DescribeEvents(ReminderList& reminders, std::span<const CTmEvent> events);

/// Creates the reminders of a new series, all of one list. Those that the server didn't take are dropped.
void CreateSeriesReminders(const CalendarWorld& world, ReminderList reminders);

/// Brings the reminders of one event to those that it holds, and lets them say what it says. Afterwards it holds what
/// stands in the file. `report` is of the progress alone: a server that fails is asked about and told in any case.
void UpdateEventReminders(const CalendarWorld& world, CTmEvent& event, Report report);
/// Brings the reminders of one event back to what they were before such an update.
void TakeBackEventReminders(const CalendarWorld& world, CTmEvent event, const ReminderList& before);

/// What a removal parts the reminders of the file into.
struct LeavingReminders {
    ReminderList leaving, staying;
    bool isOfOneEvent = false;
};
/// Those of an event that go with it: those that it holds, or those of its id if it holds none.
LeavingReminders RemindersLeavingWith(const CTmEvent& event, ReminderList all);
/// The same for many events, by their ids.
LeavingReminders RemindersLeavingWith(const EventList& events, ReminderList all);

/// Removes what leaves from the server, then writes what stays by `write()`, and tells at last of a server that failed.
/// What `write()` gives. The server comes first, so `write()` should hardly fail.
bool RemoveLeaving(const CalendarWorld& world, const LeavingReminders& reminders, Report report,
                   const std::function<bool()>& write);
/// Removes the reminders of events whose change is in the file already. Failures are told.
void RemoveRemindersOfEvents(const CalendarWorld& world, const EventList& events, Report report);

/// The reminders of an event as the file holds them; none if it can't be read.
ReminderList StoredReminders(const CalendarWorld& world, const std::string& eventId);

}  // namespace lore
