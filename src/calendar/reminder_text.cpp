#include "calendar/reminder_text.h"

#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"

namespace lore {

const char* ReminderListName(int32_t type) {
    switch (static_cast<ReminderType>(type)) {
        case ReminderType::Popup:
            return "POPUP";
        case ReminderType::Email:
            return "EMAIL";
        case ReminderType::TextMessage:
            return "TEXT MSG";
    }
    return "";
}

std::string ReminderLine(const CTmReminder& reminder, const DateTime& now) {
    const bool isToday = IsSameDay(reminder.SendTime, now);
    return std::string(ReminderListName(reminder.Type)) + ":  " +
           (isToday ? "Today" : reminder.SendTime.Format("%m/%d/%y")) + "  " + ShortTime(reminder.SendTime);
}

std::string SentTo(const CTmReminder& reminder) {
    switch (static_cast<ReminderType>(reminder.Type)) {
        case ReminderType::Email:
            return reminder.EmailAddress;
        case ReminderType::TextMessage:
            return reminder.PhoneNumber;
        case ReminderType::Popup:
            break;
    }
    return "Lorebinder Agent";
}

}  // namespace lore
