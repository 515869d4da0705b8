#pragma once

#include <string_view>

#include "calendar/event_list.h"
#include "calendar/reminder_list.h"
#include "ports/read_context.h"

namespace lore {

/// What the sample adds to the calendar: reminders of a day, and those of its events within the events.
struct SampleCalendar {
    EventList events;
    ReminderList reminders;
};

/// Events, weekly series and reminders from `{"events":[...],"series":[...],"reminders":[...]}`, with days counted from
/// the context's local day. An entry has `day`, `from` and `to` ("HH:MM"; without them the whole day), `days` (how many
/// it lasts), `color`, `label`, `text` and `remind` (minutes before it); a series also has `weekday` and `weeks`; a
/// reminder `day`, `at` and `message`. Popups for moments that lie less than an hour ahead are left out, as the user
/// couldn't set them either.
SampleCalendar ReadSampleCalendar(std::string_view text, const ReadContext& context);

}  // namespace lore
