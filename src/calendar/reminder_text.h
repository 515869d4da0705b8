#pragma once

#include <string>

#include "calendar/reminder.h"

namespace lore {

/// "POPUP", "EMAIL" or "TEXT MSG"; empty for a number that is no type.
const char* ReminderListName(int32_t type);

/// The row of a reminder in the event editor: "POPUP:  Today  9:05am", "EMAIL:  02/03/11  9:05am".
std::string ReminderLine(const CTmReminder& reminder, const DateTime& now);

/// The column "Sent To" of a day's reminders.
std::string SentTo(const CTmReminder& reminder);

}  // namespace lore
