#pragma once

#include <optional>
#include <string_view>

namespace lore {

/// A time of day to the minute, from 0:00 to 23:59.
struct TimeOfDay {
    int hour = 0, minute = 0;

    bool operator==(const TimeOfDay&) const = default;
};

/// Reads a time as it stands while somebody types it: "9", "2:30p", "14:30", "1430". What isn't typed is that of
/// `shown`, the minutes of an hour alone and the half of the day of an hour from 1 to 11; 12 is noon, and an hour that
/// begins with 0 counts from midnight. Nothing for what is no time and becomes none.
std::optional<TimeOfDay> ReadTypedTime(std::string_view typed, const TimeOfDay& shown);

}  // namespace lore
