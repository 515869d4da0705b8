#include "calendar/date_arithmetic.h"

#include <chrono>

namespace lore {

DateTime PlusMonths(const DateTime& date, int64_t months, int day) {
    const int64_t month = date.Year() * int64_t{12} + date.Month() - 1 + months;
    if (!date.IsValid() || month < 0 || month / 12 > DateTime::kLastYear)
        return DateTime::Invalid();
    return DateTime(static_cast<int>(month / 12), static_cast<int>(month % 12) + 1, day, date.Hour(), date.Minute(),
                    date.Second());
}

DateTime AtTimeOf(const DateTime& day, const DateTime& time) {
    if (!day.IsValid() || !time.IsValid())
        return DateTime::Invalid();
    return DateTime(day.Year(), day.Month(), day.Day(), time.Hour(), time.Minute(), time.Second());
}

int DaysInMonth(int year, int month) {
    const std::chrono::year_month_day_last last(std::chrono::year(year) / month / std::chrono::last);
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace lore
