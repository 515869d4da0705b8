#include "calendar/series_rules.h"

#include <algorithm>

#include "base/text.h"
#include "calendar/date_arithmetic.h"
#include "calendar/series.h"

namespace lore {

namespace {

constexpr int kMostN = 999;

/// Slots of a pattern that are one default: a day of the week, of the month or of the year.
struct StartSlots {
    SeriesType type;
    size_t first, last;
};
constexpr StartSlots kStartSlots[] = {{kWeekly, kWeeklySunday, kWeeklySlots - 1},
                                      {kMonthly, kMonthlyDay, kMonthlyDay},
                                      {kMonthly, kMonthlyOrdinal, kMonthlyWeekday},
                                      {kYearly, kYearlyMonth, kYearlyDay},
                                      {kYearly, kYearlyOrdinal, kYearlyWeekdayMonth}};

/// The N of the form that is selected for a type; 12 months for a yearly one.
int32_t StepOf(const CTmEvent& event, int32_t type) {
    switch (type) {
        case kDaily:
            return PatternAt(event.DailyPattern, kDailyN);
        case kWeekly:
            return PatternAt(event.WeeklyPattern, kWeeklyN);
        case kMonthly: {
            const bool onDay = PatternAt(event.MonthlyPattern, kMonthlyOnDay) == 1;
            return PatternAt(event.MonthlyPattern, onDay ? kMonthlyDayN : kMonthlyWeekdayN);
        }
        case kYearly:
            return 12;
        default:
            return -1;
    }
}

/// How many days a series needs at least, and the end that it gets if it has fewer.
struct MinimumLength {
    int64_t days = 0;
    DateTime end = DateTime::Invalid();
};

MinimumLength MinimumOf(const DateTime& start, int32_t type, int64_t step) {
    if (type == kDaily)
        return {step, start.PlusDays(step)};
    if (type == kWeekly)
        return {7 * step, start.PlusDays(7 * step - 1)};
    const DateTime end = PlusMonths(start, step, start.Day());
    return {SpanBetween(start, end).WholeDays(), end};
}

}  // namespace

void ApplyMinimumLength(CTmEvent& event, int32_t type) {
    const int32_t step = StepOf(event, type);
    const DateSpan length = SpanBetween(event.RecurrenceStart, event.RecurrenceEnd);
    if (step < 1 || length.status != DateTime::Status::Valid)
        return;
    const MinimumLength minimum = MinimumOf(event.RecurrenceStart, type, step);
    if (minimum.end.IsValid() && length.WholeDays() < minimum.days && event.RecurrenceEnd.IsEarlierOrEqual(minimum.end))
        event.RecurrenceEnd = minimum.end;
}

void KeepEndAfterStart(CTmEvent& event) {
    if (event.RecurrenceEnd.IsValid() && event.RecurrenceStart.IsValid() &&
        event.RecurrenceEnd.IsEarlierOrEqual(event.RecurrenceStart))
        event.RecurrenceEnd = event.RecurrenceStart;
}

std::string CorrectPatternInput(std::string_view typed) {
    std::string digits;
    std::copy_if(typed.begin(), typed.end(), std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    if (digits.empty())
        return digits;
    const int number = ParseInt(digits);
    const int held = std::clamp(number, 1, kMostN);
    return held == number ? digits : std::to_string(held);
}

void FillPatternDefaults(CTmEvent& event, int32_t type) {
    if (type < 0 || type >= kSeriesTypes || !event.Start.IsValid())
        return;
    const PatternList& pattern = kPatternLists[static_cast<size_t>(type)];
    LongList& list = event.*pattern.list;
    if (std::any_of(list.begin(), list.end(), [](int32_t value) { return value != -1; }))
        return;
    const int32_t weekday = event.Start.DayOfWeek() - 1, ordinal = NthWeekdayIndex(event.Start, false);
    const int32_t day = event.Start.Day(), month = event.Start.Month() - 1;
    switch (type) {
        case kDaily:
            list = {1, 0, 1};
            break;
        case kWeekly:
            list = {1, 0, 0, 0, 0, 0, 0, 0};
            list.SetAt(kWeeklySunday + static_cast<size_t>(weekday), 1);
            break;
        case kMonthly:
            list = {1, 0, day, 1, ordinal, weekday, 1};
            break;
        default:
            list = {1, 0, month, day, ordinal, weekday, month};
    }
}

void MovePatternDefaults(CTmEvent& event, const DateTime& before) {
    CTmEvent from, to;
    from.Start = before;
    to.Start = event.Start;
    for (int32_t type = 0; type < kSeriesTypes; ++type) {
        FillPatternDefaults(from, type);
        FillPatternDefaults(to, type);
    }
    for (const StartSlots& slots : kStartSlots) {
        LongList CTmEvent::*const pattern = kPatternLists[slots.type].list;
        LongList& list = event.*pattern;
        bool isDefault = true;
        for (size_t slot = slots.first; slot <= slots.last; ++slot)
            isDefault = isDefault && PatternAt(list, slot) == PatternAt(from.*pattern, slot);
        for (size_t slot = slots.first; isDefault && slot <= slots.last; ++slot)
            list.SetAt(slot, PatternAt(to.*pattern, slot));
    }
}

}  // namespace lore
