#include "base/date_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include "base/ascii.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr int64_t kDaySeconds = 86400;
constexpr int64_t kAllDays = 4'000'000;  // more than all valid years hold

constexpr std::array<const char*, 12> kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

std::chrono::sys_seconds Moment(int64_t seconds) {
    return std::chrono::sys_seconds(std::chrono::seconds(seconds));
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

/// The numbers of a date field as the program writes it, and as nearly all are.
bool ParseWrittenDate(std::string_view text, std::array<int, 6>& numbers) {
    constexpr std::string_view kForm = "0000-00-00-00-00-00";
    if (text.size() != kForm.size())
        return false;
    for (size_t i = 0, part = 0; i < kForm.size(); ++i) {
        if (kForm[i] == '0' && IsDigit(text[i]))
            numbers[part] = numbers[part] * 10 + (text[i] - '0');
        else if (kForm[i] == '-' && text[i] == '-')
            ++part;
        else
            return false;
    }
    return true;
}

/// Those of any other text between five hyphens.
bool ParseOddDate(std::string_view text, std::array<int, 6>& numbers) {
    if (std::count(text.begin(), text.end(), '-') != 5)
        return false;
    for (int& number : numbers) {
        const size_t end = text.find('-');
        number = ParseInt(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return true;
}

}  // namespace

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second) {
    status_ = Status::Invalid;
    // Larger numbers would be cut before they are judged.
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 ||
        hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
        return;
    const std::chrono::year_month_day date = std::chrono::year(year) / month / day;
    if (!date.ok())
        return;
    status_ = Status::Valid;
    year_ = static_cast<int16_t>(year);
    month_ = static_cast<int8_t>(month);
    day_ = static_cast<int8_t>(day);
    hour_ = static_cast<int8_t>(hour);
    minute_ = static_cast<int8_t>(minute);
    second_ = static_cast<int8_t>(second);
    const auto time = std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second);
    seconds_ = (std::chrono::sys_days(date) + time).time_since_epoch().count();
}

DateTime DateTime::Invalid() {
    DateTime date;
    date.status_ = Status::Invalid;
    return date;
}

DateTime DateTime::FromSeconds(int64_t seconds) {
    static const int64_t kLowest = DateTime(kFirstYear, 1, 1).Seconds();
    static const int64_t kHighest = DateTime(kLastYear, 12, 31, 23, 59, 59).Seconds();
    if (seconds < kLowest || seconds > kHighest)
        return Invalid();
    const std::chrono::sys_seconds moment = Moment(seconds);
    const auto days = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss time(moment - days);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

int DateTime::DayOfWeek() const {
    if (!IsValid())
        return 0;
    const std::chrono::weekday day(std::chrono::floor<std::chrono::days>(Moment(seconds_)));
    return static_cast<int>(day.c_encoding()) + 1;
}

DateTime DateTime::PlusDays(int64_t days) const {
    if (days > kAllDays || days < -kAllDays)
        return IsValid() ? Invalid() : *this;
    return PlusSeconds(days * kDaySeconds);
}

DateTime DateTime::PlusSeconds(int64_t seconds) const {
    constexpr int64_t kAllSeconds = kAllDays * kDaySeconds;
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
    if (!ParseWrittenDate(text, numbers) && !ParseOddDate(text, numbers))
        return false;
    date = DateTime(numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]);
    return true;
}

std::string DateFieldText(const DateTime& date) {
    return date.Format("%Y-%m-%d-%H-%M-%S");
}

std::optional<DateArgument> ParseDate(std::string_view text) {
    constexpr std::string_view kForm = "0000-00-00T00:00:00";
    constexpr size_t kDay = 10, kMinutes = 16;
    if (text.size() != kDay && text.size() != kMinutes && text.size() != kForm.size())
        return std::nullopt;
    std::array<int, 6> parts{};
    size_t part = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] == '0' && IsDigit(text[i]))
            parts[part] = parts[part] * 10 + (text[i] - '0');
        else if (kForm[i] != '0' && (text[i] == kForm[i] || (kForm[i] == 'T' && text[i] == ' ')))
            ++part;
        else
            return std::nullopt;
    }
    const DateTime date(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]);
    return date.IsValid() ? std::optional(DateArgument{date, text.size() > kDay}) : std::nullopt;
}

}  // namespace lore
