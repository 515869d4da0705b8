#include "calendar/series_text.h"

#include <array>

namespace lore {

namespace {

constexpr std::array<const char*, 7> kShortDays = {"SUN", "MON", "TUES", "WED", "THUR", "FRI", "SAT"};
constexpr std::array<const char*, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};
constexpr std::array<const char*, 12> kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                                 "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 5> kOrdinals = {"1st", "2nd", "3rd", "4th", "last"};

template <size_t size>
std::string NameAt(const std::array<const char*, size>& names, int32_t number) {
    return number >= 0 && static_cast<size_t>(number) < size ? names[static_cast<size_t>(number)] : "";
}

/// `onEach` for an N of 1, `onMany` for a larger one, nothing for a smaller one.
std::string ByCount(int32_t n, const std::string& onEach, const std::string& onMany) {
    return n < 1 ? "" : n == 1 ? onEach : onMany;
}

std::string DailyText(const LongList& pattern) {
    const int32_t n = PatternAt(pattern, kDailyN);
    if (PatternAt(pattern, kDailyEveryN) == 1)
        return ByCount(n, "Repeats every day", "Repeats every " + std::to_string(n) + " days");
    return PatternAt(pattern, kDailyWeekdays) == 1 ? "Repeats every weekday" : "";
}

std::string WeeklyText(const LongList& pattern) {
    std::string days;
    for (size_t day = 0; day < kShortDays.size(); ++day) {
        if (PatternAt(pattern, kWeeklySunday + day) == 1)
            days += std::string(days.empty() ? " " : ", ") + kShortDays[day];
    }
    const int32_t n = PatternAt(pattern, kWeeklyN);
    return days.empty()
               ? ""
               : ByCount(n, "Repeats every week on" + days, "Repeats every " + std::to_string(n) + " weeks on" + days);
}

/// "the 2nd Monday" or nothing.
std::string NthWeekday(int32_t ordinal, int32_t weekday) {
    const std::string nth = NameAt(kOrdinals, ordinal), day = NameAt(kWeekdays, weekday);
    return nth.empty() || day.empty() ? "" : "the " + nth + " " + day;
}

std::string MonthlyText(const LongList& pattern) {
    const auto everyMonths = [](int32_t n) { return " every " + std::to_string(n) + " months"; };
    const int32_t dayN = PatternAt(pattern, kMonthlyDayN);
    if (PatternAt(pattern, kMonthlyOnDay) == 1 && dayN >= 1) {
        const std::string head = "Repeats on day " + std::to_string(PatternAt(pattern, kMonthlyDay));
        return ByCount(dayN, head + " of every month", head + everyMonths(dayN));
    }
    const std::string nth = NthWeekday(PatternAt(pattern, kMonthlyOrdinal), PatternAt(pattern, kMonthlyWeekday));
    if (PatternAt(pattern, kMonthlyOnWeekday) != 1 || nth.empty())
        return "";
    const int32_t n = PatternAt(pattern, kMonthlyWeekdayN);
    return ByCount(n, "Repeats on " + nth + " of every month", "Repeats on " + nth + everyMonths(n));
}

std::string YearlyText(const LongList& pattern) {
    if (PatternAt(pattern, kYearlyOnDate) == 1) {
        const std::string month = NameAt(kMonths, PatternAt(pattern, kYearlyMonth));
        return month.empty() ? "" : "Repeats on every " + month + " " + std::to_string(PatternAt(pattern, kYearlyDay));
    }
    const std::string nth = NthWeekday(PatternAt(pattern, kYearlyOrdinal), PatternAt(pattern, kYearlyWeekday));
    const std::string month = NameAt(kMonths, PatternAt(pattern, kYearlyWeekdayMonth));
    if (PatternAt(pattern, kYearlyOnWeekday) != 1 || nth.empty() || month.empty())
        return "";
    return "Repeats on " + nth + " of " + month;
}

/// One text function for each kind of pattern list, by SeriesType.
constexpr std::array<std::string (*)(const LongList&), kSeriesTypes> kTexts = {DailyText, WeeklyText, MonthlyText,
                                                                               YearlyText};

}  // namespace

std::string SeriesSummary(const CTmEvent& event) {
    if (event.RecurrenceType < 0 || event.RecurrenceType >= kSeriesTypes)
        return "";
    const auto type = static_cast<size_t>(event.RecurrenceType);
    const std::string text = kTexts[type](event.*kPatternLists[type].list);
    if (text.empty())
        return "";
    return text + " from " + event.RecurrenceStart.Format("%m/%d/%y") + " to " + event.RecurrenceEnd.Format("%m/%d/%y");
}

}  // namespace lore
