#include "calendar/reminder.h"

#include <tuple>

#include "calendar/date_arithmetic.h"

namespace lore {

void ResetReminder(CTmReminder& reminder, const ReadContext& context) {
    reminder = CTmReminder();
    reminder.ServerSendTime = reminder.SendTime = reminder.EventStart = context.now;
}

CTmReminder NewReminder(const ReadContext& context) {
    CTmReminder reminder;
    ResetReminder(reminder, context);
    reminder.ReminderId = context.guids->NewGuid();
    return reminder;
}

void SendBeforeStart(CTmReminder& reminder, int32_t minutes) {
    reminder.PriorMinutes = minutes;
    reminder.SendTime = reminder.ServerSendTime = reminder.EventStart.PlusSeconds(-minutes * kMinute);
}

const char* ReminderTypeName(int32_t type) {
    switch (static_cast<ReminderType>(type)) {
        case ReminderType::Popup:
            return "Popup";
        case ReminderType::Email:
            return "Email";
        case ReminderType::TextMessage:
            return "TxtMsg";
    }
    return "";
}

bool IsServerReminder(const CTmReminder& reminder) {
    const auto type = static_cast<ReminderType>(reminder.Type);
    return type == ReminderType::Email || type == ReminderType::TextMessage;
}

bool ReminderDiffers(const CTmReminder& a, const CTmReminder& b) {
    const auto compared = [](const CTmReminder& r) {
        return std::tie(r.ReminderId, r.Type, r.PriorMinutes, r.EventId, r.Message, r.ServerSendTime, r.SendTime,
                        r.EventStart, r.ServerId, r.SendTo, r.ServerDone);
    };
    return !(compared(a) == compared(b));
}

bool SameReminder(const CTmReminder& a, const CTmReminder& b) {
    const auto compared = [](const CTmReminder& r) { return std::tie(r.Type, r.PriorMinutes, r.SendTo, r.Message); };
    return compared(a) == compared(b) && SpanBetween(a.SendTime, a.EventStart) == SpanBetween(b.SendTime, b.EventStart);
}

}  // namespace lore
