#include "base/date_time.h"

#include <array>
#include <cstdio>

#include "base/text.h"

namespace lore {

namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int64_t kDaySeconds = 86400;

constexpr std::array<const char*, 12> kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

bool IsLeap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeap(year) ? 29 : kDays[static_cast<size_t>(month - 1)];
}

/// Days from 1970-01-01 in the proleptic Gregorian calendar, counted in years that begin in March; from the year 1 on.
int64_t DaysFromCivil(int year, int month, int day) {
    const int64_t y = month <= 2 ? year - 1 : year;
    const int64_t era = y / 400;
    const int64_t yearOfEra = y - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

struct Civil {
    int64_t year;
    int month, day;
};

Civil CivilFromDays(int64_t days) {
    days += 719468;
    const int64_t era = days / 146097;
    const int64_t dayOfEra = days - era * 146097;
    const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t shifted = (5 * dayOfYear + 2) / 153;
    const int month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month,
            static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1)};
}

std::string Digits(int value, int width) {
    std::string text = std::to_string(value);
    if (static_cast<int>(text.size()) < width)
        text.insert(0, static_cast<size_t>(width) - text.size(), '0');
    return text;
}

std::string FormatPart(char letter, const DateTime& d) {
    switch (letter) {
        case 'Y':
            return Digits(d.Year(), 4);
        case 'y':
            return Digits(d.Year() % 100, 2);
        case 'm':
            return Digits(d.Month(), 2);
        case 'd':
            return Digits(d.Day(), 2);
        case 'H':
            return Digits(d.Hour(), 2);
        case 'I':
            return Digits(d.Hour() % 12 == 0 ? 12 : d.Hour() % 12, 2);
        case 'M':
            return Digits(d.Minute(), 2);
        case 'S':
            return Digits(d.Second(), 2);
        case 'p':
            return d.Hour() < 12 ? "AM" : "PM";
        case 'B':
            return kMonths[static_cast<size_t>(d.Month() - 1)];
        case 'b':
            return std::string(kMonths[static_cast<size_t>(d.Month() - 1)]).substr(0, 3);
        case 'A':
            return kWeekdays[static_cast<size_t>(d.DayOfWeek() - 1)];
        case 'a':
            return std::string(kWeekdays[static_cast<size_t>(d.DayOfWeek() - 1)]).substr(0, 3);
        default:
            return std::string(1, letter);
    }
}

}  // namespace

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second) {
    status_ = Status::Invalid;
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month) ||
        hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
        return;
    status_ = Status::Valid;
    year_ = static_cast<int16_t>(year);
    month_ = static_cast<int8_t>(month);
    day_ = static_cast<int8_t>(day);
    hour_ = static_cast<int8_t>(hour);
    minute_ = static_cast<int8_t>(minute);
    second_ = static_cast<int8_t>(second);
    seconds_ = DaysFromCivil(year, month, day) * kDaySeconds + int64_t{hour} * 3600 + int64_t{minute} * 60 + second;
}

DateTime DateTime::Invalid() {
    DateTime date;
    date.status_ = Status::Invalid;
    return date;
}

DateTime DateTime::FromSeconds(int64_t seconds) {
    static const int64_t kLowest = DaysFromCivil(kFirstYear, 1, 1) * kDaySeconds;
    static const int64_t kEnd = DaysFromCivil(kLastYear + 1, 1, 1) * kDaySeconds;
    if (seconds < kLowest || seconds >= kEnd)
        return Invalid();
    const int64_t days = (seconds >= 0 ? seconds : seconds - (kDaySeconds - 1)) / kDaySeconds;
    const int ofDay = static_cast<int>(seconds - days * kDaySeconds);
    const Civil civil = CivilFromDays(days);
    return {static_cast<int>(civil.year), civil.month, civil.day, ofDay / 3600, ofDay / 60 % 60, ofDay % 60};
}

int DateTime::DayOfWeek() const {
    if (!IsValid())
        return 0;
    const int64_t days = DaysFromCivil(year_, month_, day_);
    return static_cast<int>(((days + 4) % 7 + 7) % 7) + 1;  // 1970-01-01 was a Thursday
}

DateTime DateTime::PlusDays(int64_t days) const {
    constexpr int64_t kAllDays = 4'000'000;  // more than all valid years hold
    if (days > kAllDays || days < -kAllDays)
        return IsValid() ? Invalid() : *this;
    return PlusSeconds(days * kDaySeconds);
}

DateTime DateTime::PlusSeconds(int64_t seconds) const {
    constexpr int64_t kAllSeconds = 4'000'000 * kDaySeconds;
    if (!IsValid())
        return *this;
    if (seconds > kAllSeconds || seconds < -kAllSeconds)
        return Invalid();
    return FromSeconds(seconds_ + seconds);
}

DateTime DateTime::Midnight() const {
    return IsValid() ? DateTime(year_, month_, day_) : *this;
}

std::string DateTime::Format(std::string_view format) const {
    if (IsNull())
        return {};
    if (!IsValid())
        return "Invalid DateTime";
    std::string text;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%' && i + 1 < format.size())
            text += FormatPart(format[++i], *this);
        else
            text += format[i];
    }
    return text;
}

bool DateTime::IsEarlierOrEqual(const DateTime& other) const {
    if (status_ == Status::Invalid || other.status_ == Status::Invalid)
        return false;
    return status_ == other.status_ && seconds_ <= other.seconds_;
}

bool ParseDateFieldText(std::string_view text, DateTime& date) {
    std::array<int, 6> numbers{};
    size_t hyphens = 0;
    for (const char c : text)
        hyphens += c == '-';
    if (hyphens != 5)
        return false;
    for (int& number : numbers) {
        const size_t end = text.find('-');
        number = ParseInt(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    date = DateTime(numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]);
    return true;
}

std::string DateFieldText(const DateTime& date) {
    return date.Format("%Y-%m-%d-%H-%M-%S");
}

}  // namespace lore
