#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lore {

/// A calendar moment in whole seconds with a status.
class DateTime {
public:
    enum class Status { Valid = 0, Invalid = 1, Null = 2 };
    /// Valid dates lie in these years.
    static constexpr int kFirstYear = 100, kLastYear = 9999;

    /// A null date.
    DateTime() = default;
    /// A date from its six numbers; invalid unless they name an existing moment.
    DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    static DateTime Invalid();
    /// From seconds since 1970-01-01 00:00:00 of the same calendar, without any time zone; invalid outside the years.
    static DateTime FromSeconds(int64_t seconds);

    Status GetStatus() const { return status_; }
    bool IsValid() const { return status_ == Status::Valid; }
    bool IsNull() const { return status_ == Status::Null; }

    // Parts of a valid date; all 0 otherwise.
    int Year() const { return year_; }
    int Month() const { return month_; }
    int Day() const { return day_; }
    int Hour() const { return hour_; }
    int Minute() const { return minute_; }
    int Second() const { return second_; }
    /// 1 Sunday to 7 Saturday; 0 unless valid.
    int DayOfWeek() const;

    /// Seconds since 1970-01-01 00:00:00 of the same calendar; 0 unless valid.
    int64_t Seconds() const { return seconds_; }
    /// The moment so many days (seconds) later, invalid outside the years; an invalid or null date stays as it is.
    DateTime PlusDays(int64_t days) const;
    DateTime PlusSeconds(int64_t seconds) const;
    /// The same day at 00:00:00.
    DateTime Midnight() const;

    /// Text by a format of %Y %m %d %H %M %S %y %B %b %A %a %I %p %%, with English names.
    /// An invalid date gives "Invalid DateTime", a null date an empty text.
    std::string Format(std::string_view format) const;

    /// Equal status and, for valid dates, the same moment.
    bool operator==(const DateTime& other) const { return status_ == other.status_ && seconds_ == other.seconds_; }
    /// The test "earlier or equal" of note sorting and event ranges: an earlier moment is, an equal moment of equal
    /// valid status is, two null dates are, everything with an invalid date isn't.
    bool IsEarlierOrEqual(const DateTime& other) const;

private:
    Status status_ = Status::Null;
    int16_t year_ = 0;
    int8_t month_ = 0, day_ = 0, hour_ = 0, minute_ = 0, second_ = 0;
    int64_t seconds_ = 0;
};

/// Reads the text of a date field, six numbers between five hyphens. False if there aren't exactly five hyphens: then
/// `date` keeps its value. Numbers that name no moment give an invalid date and true.
bool ParseDateFieldText(std::string_view text, DateTime& date);

/// The text that a date field stores: "2011-07-12-14-20-24", "Invalid DateTime", or nothing for a null date.
std::string DateFieldText(const DateTime& date);

/// A date of the command line, or of a file that is handed to it.
struct DateArgument {
    DateTime date;
    bool hasTime = false;  ///< more than a day was given
};
/// "YYYY-MM-DD", alone or with "THH:MM" or "THH:MM:SS" after it, where a blank does for the T. Nothing for anything
/// else and for a moment that doesn't exist.
std::optional<DateArgument> ParseDate(std::string_view text);

}  // namespace lore
