#pragma once

#include <string>

#include "calendar/calendar_world.h"

namespace lore {

/// How a test of the reminder server came out.
enum class ServerCheck {
    Answers,
    NoAnswer,
    TriedInVain,  ///< nor did it answer when the user tried again
};

/// Whether the reminder server answers, tested twice. A shown failure asks whether to try again; where no server is set
/// up, the user is told that instead.
ServerCheck CheckServer(const CalendarWorld& world, Report report);

/// False, told, where no reminder server is set up.
bool MayUseServer(const CalendarWorld& world);

/// The moment of sending on the server's clock: the two clocks' difference is taken off. `now` is this computer's time,
/// its seconds don't count. Never exactly midnight; invalid if the server's time is.
DateTime ServerSendTimeOf(const DateTime& sendTime, const DateTime& now, const DateTime& serverTime);

/// What the server sends for a reminder.
std::string ServerMessage(const CTmReminder& reminder);

/// Creates or replaces the reminder on the server: on success it has the server's number and `ServerDone`. It has its
/// time on the server's clock in any case.
bool RegisterOnServer(const CalendarWorld& world, CTmReminder& reminder);
/// Removes the reminder from the server, if it is known there. False if the server didn't do it.
bool RemoveFromServer(const CalendarWorld& world, const CTmReminder& reminder);

/// What a failure text says that could not be done.
enum class ReminderFailure {
    NotAllUpdated,
    NotAllSeriesUpdated,
    NotAllRemoved,
    DayNotCreated,
    DayNotUpdated,
    DayNotDeleted,
};
/// The message "Reminder Update Failed".
void TellReminderFailure(const CalendarWorld& world, ReminderFailure failure);

}  // namespace lore
