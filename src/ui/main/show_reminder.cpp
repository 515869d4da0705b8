#include "ui/main/show_reminder.h"

#include "calendar/reminder_target.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/calendar/edit_event_dialog.h"

namespace lore {

void ShowReminder(CLorebinderApp& app, const Theme& theme, QWidget& parent, const std::string& reminderId) {
    CalendarHost host(app, theme, &parent);
    const std::optional<ReminderTarget> target = FindReminderTarget(host.World(), reminderId);
    if (!target)
        return;
    if (target->event)
        RunEventEditor(host, *target->event, &parent);
    else
        EditDayDialog(host, target->day, &parent).exec();
}

}  // namespace lore
