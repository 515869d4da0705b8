#include "calendar/reminder_target.h"

namespace lore {

std::optional<ReminderTarget> FindReminderTarget(const CalendarWorld& world, std::string_view reminderId) {
    ReminderList reminders;
    EventList events;
    if (!LoadReminders(world, reminders) || !LoadEvents(world, events))
        return std::nullopt;
    const CTmReminder* const reminder = FindReminder(reminders, reminderId);
    if (!reminder)
        return std::nullopt;
    ReminderTarget target{.event = {}, .day = reminder->SendTime.Midnight()};
    if (const int index = FindEventIndex(events, reminder->EventId); index >= 0)
        target.event = std::move(events[static_cast<size_t>(index)]);
    return target;
}

}  // namespace lore
