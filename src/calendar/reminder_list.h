#pragma once

#include <string_view>
#include <vector>

#include "calendar/reminder.h"

namespace lore {

using ReminderList = std::vector<CTmReminder>;

// Ids are compared exactly. Where a list holds an id twice, the first record with it is meant.

ReminderList RemindersOfEvent(const ReminderList& list, std::string_view eventId);
/// The reminders whose SendTime falls on the day of `date`; none for a date that isn't valid.
ReminderList RemindersOnDate(const ReminderList& list, const DateTime& date);
/// True if the list holds an e-mail or a text message.
bool HasServerReminder(const ReminderList& list);
void ClearServerDone(ReminderList& list);
void ClearServerIds(ReminderList& list);

/// The record with this id, or null. It lives as long as the list isn't changed.
const CTmReminder* FindReminder(const ReminderList& list, std::string_view reminderId);
/// Overwrites the record with the same id; false if there is none.
bool ReplaceReminder(ReminderList& list, const CTmReminder& reminder);
bool RemoveReminder(ReminderList& list, std::string_view reminderId);
/// RemoveReminder for each record of the second list.
void RemoveReminders(ReminderList& list, const ReminderList& removed);
void AddReminders(ReminderList& list, const ReminderList& added);

/// True if the counts differ, or a reminder of `a` has no partner of its id in `b` or differs from it.
bool RemindersDiffer(const ReminderList& a, const ReminderList& b);
/// True if the list holds a reminder that is the same across events.
bool HasSameReminder(const ReminderList& list, const CTmReminder& reminder);

}  // namespace lore
