#pragma once

#include <optional>
#include <string_view>

#include "calendar/calendar_world.h"

namespace lore {

/// What a reminder is about.
struct ReminderTarget {
    std::optional<CTmEvent> event;
    DateTime day;  ///< of the reminder, where it has no event, or one that is gone
};

/// Nothing for an id that no reminder has.
std::optional<ReminderTarget> FindReminderTarget(const CalendarWorld& world, std::string_view reminderId);

}  // namespace lore
