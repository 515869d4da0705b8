#pragma once

#include "calendar/calendar_world.h"

namespace lore {

// Reminders that belong to no event. E-mails and text messages are changed on the server first: if that fails, the file
// stays as it was and the user is told. True if the change is done.

bool SaveNewReminder(const CalendarWorld& world, CTmReminder reminder);
bool SaveChangedReminder(const CalendarWorld& world, CTmReminder reminder);
/// Asks first.
bool DeleteReminder(const CalendarWorld& world, const CTmReminder& reminder);

/// When a new reminder of a day is sent at first: at 08:00 of that day; today, and without a day, at the next ten
/// minutes an hour from now.
DateTime FirstSendTime(const DateTime& now, const DateTime* day);

}  // namespace lore
