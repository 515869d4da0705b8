#pragma once

#include <string>
#include <vector>

#include "calendar/calendar_world.h"

namespace lore {

/// What the day dialog shows: the events and reminders of one day, from the files.
class DayView {
public:
    /// The world outlives the view.
    DayView(const CalendarWorld& world, const DateTime& day);

    const DateTime& Day() const { return day_; }
    /// "Monday, January 03 2011"
    std::string Title() const;
    /// Reads both files again.
    void Reload();
    const EventList& Events() const { return events_; }
    /// The earliest first.
    const ReminderList& Reminders() const { return reminders_; }

    // Cells of the lists. An event of other days shows the date in place of the time.
    std::string StartOf(const CTmEvent& event) const;
    std::string EndOf(const CTmEvent& event) const;

private:
    std::string MomentOf(const CTmEvent& event, const DateTime& moment, const char* allDay) const;

    const CalendarWorld& world_;
    DateTime day_;
    EventList events_;
    ReminderList reminders_;
};

}  // namespace lore
