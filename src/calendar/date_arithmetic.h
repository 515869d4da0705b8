#pragma once

#include <cstdint>

#include "base/date_time.h"

namespace lore {

// Seconds.
inline constexpr int64_t kMinute = 60, kHour = 60 * kMinute, kDay = 24 * kHour;

/// The difference of two dates. It is null if one of them is null, else invalid if one of them is invalid.
struct DateSpan {
    DateTime::Status status = DateTime::Status::Valid;
    int64_t seconds = 0;  ///< 0 unless valid

    bool operator==(const DateSpan&) const = default;
    /// Whole days, cut towards zero.
    int64_t WholeDays() const { return seconds / kDay; }
};

inline DateSpan SpanBetween(const DateTime& from, const DateTime& to) {
    if (from.IsNull() || to.IsNull())
        return {DateTime::Status::Null, 0};
    if (!from.IsValid() || !to.IsValid())
        return {DateTime::Status::Invalid, 0};
    return {DateTime::Status::Valid, to.Seconds() - from.Seconds()};
}

inline bool IsSameDay(const DateTime& a, const DateTime& b) {
    return a.Year() == b.Year() && a.Month() == b.Month() && a.Day() == b.Day();
}

/// False unless both dates are valid.
inline bool IsLater(const DateTime& a, const DateTime& b) {
    return a.IsValid() && b.IsValid() && a.Seconds() > b.Seconds();
}

/// The given day of the month that lies so many months later, at the date's time; invalid where there is no such day.
DateTime PlusMonths(const DateTime& date, int64_t months, int day);
/// The day of one date with the time of day of another; invalid unless both are valid.
DateTime AtTimeOf(const DateTime& day, const DateTime& time);
int DaysInMonth(int year, int month);

}  // namespace lore
