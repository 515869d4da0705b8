#include "calendar/day_view.h"

#include <algorithm>

#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"

namespace lore {

DayView::DayView(const CalendarWorld& world, const DateTime& day) : world_(world), day_(day.Midnight()) {
    Reload();
}

std::string DayView::Title() const {
    return day_.Format("%A, %B %d %Y");
}

void DayView::Reload() {
    EventList events;
    ReminderList reminders;
    LoadEvents(world_, events);
    LoadReminders(world_, reminders);
    events_ = SelectByDate(events, day_);
    reminders_ = RemindersOnDate(reminders, day_);
    std::stable_sort(reminders_.begin(), reminders_.end(), [](const CTmReminder& a, const CTmReminder& b) {
        return a.SendTime.Seconds() < b.SendTime.Seconds();
    });
}

std::string DayView::StartOf(const CTmEvent& event) const {
    return MomentOf(event, event.Start, "ALL");
}

std::string DayView::EndOf(const CTmEvent& event) const {
    return MomentOf(event, event.End, "DAY");
}

std::string DayView::MomentOf(const CTmEvent& event, const DateTime& moment, const char* allDay) const {
    if (event.AllDay == 1)
        return allDay;
    return IsSameDay(moment, day_) ? ClockTime(moment) : moment.Format("%m/%d/%y");
}

}  // namespace lore
