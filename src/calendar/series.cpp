#include "calendar/series.h"

#include <array>

#include "calendar/date_arithmetic.h"

namespace lore {

namespace {

constexpr int kSunday = 1, kSaturday = 7;

/// A rhythm walks one date over the calendar: `IsDate` tells whether it stands on a date of the series, `Advance` moves
/// it on, and makes it invalid where the series ends. `CanMatch` is false for patterns that no date fulfils, over which
/// a walk would only cost time.

class EveryNDays {
public:
    explicit EveryNDays(const LongList& pattern) : days_(PatternAt(pattern, kDailyN)) {}
    bool CanMatch() const { return true; }
    bool IsDate(const DateTime&) const { return true; }
    DateTime Advance(const DateTime& date) const { return days_ < 1 ? DateTime::Invalid() : date.PlusDays(days_); }

private:
    int32_t days_;
};

class EveryWeekday {
public:
    explicit EveryWeekday(const LongList&) {}
    bool CanMatch() const { return true; }
    bool IsDate(const DateTime& date) const { return date.DayOfWeek() != kSunday && date.DayOfWeek() != kSaturday; }
    DateTime Advance(const DateTime& date) const {
        DateTime next = date.PlusDays(1);
        while (next.IsValid() && !IsDate(next))
            next = next.PlusDays(1);
        return next;
    }
};

class OnDaysOfWeek {
public:
    explicit OnDaysOfWeek(const LongList& pattern) : weeks_(PatternAt(pattern, kWeeklyN)) {
        for (int day = kSunday; day <= kSaturday; ++day)
            flags_[static_cast<size_t>(day)] = PatternAt(pattern, static_cast<size_t>(day)) == 1;
    }
    bool CanMatch() const { return flags_ != decltype(flags_){}; }
    bool IsDate(const DateTime& date) const { return flags_[static_cast<size_t>(date.DayOfWeek())]; }
    DateTime Advance(const DateTime& date) const {
        if (date.DayOfWeek() != kSaturday)
            return date.PlusDays(1);
        return weeks_ < 1 ? DateTime::Invalid() : date.PlusDays(7 * int64_t{weeks_} - 6);
    }

private:
    int32_t weeks_;
    std::array<bool, kSaturday + 1> flags_{};
};

class OnDayOfMonth {
public:
    explicit OnDayOfMonth(const LongList& pattern)
        : day_(PatternAt(pattern, kMonthlyDay)), months_(PatternAt(pattern, kMonthlyDayN)) {}
    bool CanMatch() const { return day_ >= 1 && day_ <= 31; }
    bool IsDate(const DateTime& date) const { return date.Day() == day_; }
    DateTime Advance(const DateTime& date) const {
        if (!IsDate(date))
            return date.PlusDays(1);
        return months_ < 1 ? DateTime::Invalid() : PlusMonths(date, months_, day_);
    }

private:
    int32_t day_, months_;
};

class OnWeekdayOfMonth {
public:
    explicit OnWeekdayOfMonth(const LongList& pattern)
        : OnWeekdayOfMonth(PatternAt(pattern, kMonthlyOrdinal), PatternAt(pattern, kMonthlyWeekday),
                           PatternAt(pattern, kMonthlyWeekdayN)) {}
    OnWeekdayOfMonth(int32_t ordinal, int32_t weekday, int32_t months)
        : ordinal_(ordinal), weekday_(weekday), months_(months) {}
    bool CanMatch() const { return ordinal_ >= 0 && ordinal_ <= kLastOrdinal && weekday_ >= 0 && weekday_ < 7; }
    bool IsDate(const DateTime& date) const {
        return date.DayOfWeek() == weekday_ + 1 && NthWeekdayIndex(date, ordinal_ == kLastOrdinal) == ordinal_;
    }
    DateTime Advance(const DateTime& date) const {
        if (!IsDate(date))
            return date.PlusDays(1);
        return months_ < 1 ? DateTime::Invalid() : PlusMonths(date, months_, 1);
    }

private:
    int32_t ordinal_, weekday_, months_;
};

class OnDateOfYear {
public:
    explicit OnDateOfYear(const LongList& pattern)
        : month_(PatternAt(pattern, kYearlyMonth)), day_(PatternAt(pattern, kYearlyDay)) {}
    bool CanMatch() const { return month_ >= 0 && month_ < 12 && day_ != 0; }
    // The day of the pattern isn't compared: the first date met in the month gives the day of the series.
    bool IsDate(const DateTime& date) const { return date.Month() == month_ + 1; }
    DateTime Advance(const DateTime& date) const {
        return IsDate(date) ? PlusMonths(date, 12, date.Day()) : date.PlusDays(1);
    }

private:
    int32_t month_, day_;
};

class OnWeekdayOfYear {
public:
    explicit OnWeekdayOfYear(const LongList& pattern)
        : month_(PatternAt(pattern, kYearlyWeekdayMonth)),
          weekday_(PatternAt(pattern, kYearlyOrdinal), PatternAt(pattern, kYearlyWeekday), 12) {}
    bool CanMatch() const { return month_ >= 0 && month_ < 12 && weekday_.CanMatch(); }
    bool IsDate(const DateTime& date) const { return date.Month() == month_ + 1 && weekday_.IsDate(date); }
    DateTime Advance(const DateTime& date) const { return IsDate(date) ? weekday_.Advance(date) : date.PlusDays(1); }

private:
    int32_t month_;
    OnWeekdayOfMonth weekday_;
};

/// The event's times of day on a date of its series.
class OccurrenceMaker {
public:
    explicit OccurrenceMaker(const CTmEvent& event)
        : start_(event.Start), end_(event.End), span_(SpanBetween(event.Start.Midnight(), event.End.Midnight())) {}

    Occurrence On(const DateTime& date) const {
        if (!start_.IsValid())
            return {DateTime::Invalid(), DateTime::Invalid()};
        const DateTime start = AtTimeOf(date, start_);
        if (!end_.IsValid())
            return {start, DateTime::Invalid()};
        return {start, AtTimeOf(date.Midnight().PlusDays(span_.WholeDays()), end_)};
    }

private:
    DateTime start_, end_;
    DateSpan span_;
};

template <typename Rhythm>
DatesOfSeries Walk(const CTmEvent& event, const Rhythm& rhythm) {
    DatesOfSeries found;
    if (!rhythm.CanMatch())
        return found;
    const OccurrenceMaker maker(event);
    DateTime date = event.RecurrenceStart;
    while (date.IsValid() && date.IsEarlierOrEqual(event.RecurrenceEnd) && !found.isCut) {
        if (rhythm.IsDate(date)) {
            found.isCut = found.dates.size() == kMostOccurrences;
            if (!found.isCut)
                found.dates.push_back(maker.On(date));
        }
        date = rhythm.Advance(date);
    }
    return found;
}

/// The first form of a pattern with two radio buttons if it is selected, otherwise the second.
template <typename First, typename Second>
DatesOfSeries WalkForm(const CTmEvent& event, const LongList& pattern) {
    return PatternAt(pattern, 0) == 1 ? Walk(event, First(pattern)) : Walk(event, Second(pattern));
}

}  // namespace

DatesOfSeries SeriesDates(const CTmEvent& event) {
    if (event.Recurring != 1)
        return {};
    switch (event.RecurrenceType) {
        case kDaily:
            return WalkForm<EveryNDays, EveryWeekday>(event, event.DailyPattern);
        case kWeekly:
            return Walk(event, OnDaysOfWeek(event.WeeklyPattern));
        case kMonthly:
            return WalkForm<OnDayOfMonth, OnWeekdayOfMonth>(event, event.MonthlyPattern);
        case kYearly:
            return WalkForm<OnDateOfYear, OnWeekdayOfYear>(event, event.YearlyPattern);
        default:
            return {};
    }
}

void KeepLastDay(CTmEvent& event) {
    const DateTime end = AtTimeOf(event.RecurrenceEnd, event.RecurrenceStart);
    if (end.IsValid() && event.RecurrenceEnd.IsEarlierOrEqual(end))
        event.RecurrenceEnd = end;
}

ExpandedSeries ExpandSeries(const CTmEvent& event, GuidSource& guids) {
    const std::string seriesId = guids.NewGuid();
    const DatesOfSeries found = SeriesDates(event);
    ExpandedSeries series{.records = {}, .isCut = found.isCut};
    for (const Occurrence& date : found.dates) {
        CTmEvent& record = series.records.emplace_back(event);
        NewEventId(record, guids);
        record.SeriesId = seriesId;
        record.Start = date.start;
        record.End = date.end;
    }
    return series;
}

int NthWeekdayIndex(const DateTime& date, bool wantLast) {
    if (!date.IsValid())
        return -1;
    const bool isLast = date.Day() + 7 > DaysInMonth(date.Year(), date.Month());
    return wantLast && isLast ? kLastOrdinal : (date.Day() - 1) / 7;
}

}  // namespace lore
