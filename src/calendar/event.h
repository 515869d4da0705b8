#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/long_list.h"
#include "calendar/reminder.h"

namespace lore {

/// The rhythm of a series. On disk; never change.
enum SeriesType : int32_t { kNoSeries = -1, kDaily = 0, kWeekly = 1, kMonthly = 2, kYearly = 3 };
inline constexpr int kSeriesTypes = 4;

// Positions of the pattern lists. On disk; never change. The first two of a list with two forms are radio buttons.
enum DailySlot : size_t { kDailyEveryN, kDailyWeekdays, kDailyN, kDailySlots };
/// From position 1 on a flag for each weekday, Sunday first.
enum WeeklySlot : size_t { kWeeklyN, kWeeklySunday, kWeeklySlots = 8 };
enum MonthlySlot : size_t {
    kMonthlyOnDay,
    kMonthlyOnWeekday,
    kMonthlyDay,       // 1 to 31
    kMonthlyDayN,      // every N months, day form
    kMonthlyOrdinal,   // 0 to 3, 4 for the last
    kMonthlyWeekday,   // 0 Sunday to 6 Saturday
    kMonthlyWeekdayN,  // every N months, weekday form
    kMonthlySlots
};
enum YearlySlot : size_t {
    kYearlyOnDate,
    kYearlyOnWeekday,
    kYearlyMonth,  // 0 January to 11 December
    kYearlyDay,
    kYearlyOrdinal,
    kYearlyWeekday,
    kYearlyWeekdayMonth,
    kYearlySlots
};
inline constexpr int32_t kLastOrdinal = 4;

/// A pattern list of so many slots that hold -1.
LongList UnsetPattern(size_t slots);

/// One dated entry of the calendar. A series is nothing but the events that share a SeriesId.
struct CTmEvent {
    int32_t BarColor = 1;   ///< 1 to 20
    int32_t AllDay = 1;     ///< 0 or 1
    int32_t Recurring = 0;  ///< 1 if the event belongs to a series
    int32_t RecurrenceType = kNoSeries;
    DateTime Start, End;                      ///< first and last moment
    DateTime RecurrenceStart, RecurrenceEnd;  ///< first and last date of the series, with a time of day
    LongList DailyPattern = UnsetPattern(kDailySlots);
    LongList WeeklyPattern = UnsetPattern(kWeeklySlots);
    LongList MonthlyPattern = UnsetPattern(kMonthlySlots);
    LongList YearlyPattern = UnsetPattern(kYearlySlots);
    std::string EventId;   ///< GUID text, never empty once the event is built or read
    std::string SeriesId;  ///< GUID text, empty on a single event
    std::string Label;
    std::string Description;

    std::vector<CTmReminder> Reminders;  ///< never stored with the event
};

/// Calls `visit(name, field)` for each stored field, in the order of the file.
template <typename Visitor, typename Event>
void VisitEventFields(Event& event, Visitor&& visit) {
    visit("BarColor", event.BarColor);
    visit("AllDay", event.AllDay);
    visit("Recurring", event.Recurring);
    visit("RecurrenceType", event.RecurrenceType);
    visit("Start", event.Start);
    visit("End", event.End);
    visit("RecurrenceStart", event.RecurrenceStart);
    visit("RecurrenceEnd", event.RecurrenceEnd);
    visit("DailyPattern", event.DailyPattern);
    visit("WeeklyPattern", event.WeeklyPattern);
    visit("MonthlyPattern", event.MonthlyPattern);
    visit("YearlyPattern", event.YearlyPattern);
    visit("EventId", event.EventId);
    visit("SeriesId", event.SeriesId);
    visit("Label", event.Label);
    visit("Description", event.Description);
}

/// One of the four pattern lists with its number of slots.
struct PatternList {
    LongList CTmEvent::*list;
    size_t slotCount;
};
/// By SeriesType.
inline constexpr std::array<PatternList, kSeriesTypes> kPatternLists{{{&CTmEvent::DailyPattern, kDailySlots},
                                                                      {&CTmEvent::WeeklyPattern, kWeeklySlots},
                                                                      {&CTmEvent::MonthlyPattern, kMonthlySlots},
                                                                      {&CTmEvent::YearlyPattern, kYearlySlots}}};

/// The value at a position, -1 where a damaged list is too short.
int32_t PatternAt(const LongList& pattern, size_t position);

/// All defaults, the four dates at `now`, without an id.
void ResetEvent(CTmEvent& event, const DateTime& now);
/// Sets each pattern list but the one numbered `keep` to -1. Below 0 no list is kept, and the event leaves its series.
void ResetRecurrence(CTmEvent& event, int32_t keep);
void NewEventId(CTmEvent& event, GuidSource& guids);
/// An event with the defaults and a new id.
CTmEvent NewEvent(const ReadContext& context);

/// A difference of schedule: length, series, rhythm, its bounds or its patterns. Start alone doesn't count.
bool EventsDiffer(const CTmEvent& a, const CTmEvent& b);
/// A difference of label, description, colour or reminders.
bool EventInfoDiffers(const CTmEvent& a, const CTmEvent& b);

/// True for a member of a series, which has two more commands to delete it.
bool IsSeriesMember(const CTmEvent& event);

}  // namespace lore
