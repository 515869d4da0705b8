#include "calendar/event.h"

#include <functional>
#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "support/read_world.h"

namespace lore {
namespace {

CTmEvent Sample() {
    CTmEvent event = Series(kWeekly, {2, 0, 1, 0, 0, 0, 1, 0}, Day(2011, 1, 3, 9, 5), Day(2011, 3, 31, 9, 5));
    event.Label = "Class";
    event.Reminders.emplace_back().ReminderId = "{R}";
    return event;
}

TEST(Event, TellsASchedulePartFromAnInformationPart) {
    // What changes, and whether it changes the schedule or the information.
    const std::tuple<const char*, std::function<void(CTmEvent&)>, bool, bool> changes[] = {
        {"nothing", [](CTmEvent&) {}, false, false},
        {"another day of the same length",
         [](CTmEvent& e) { e.Start = e.Start.PlusDays(1), e.End = e.End.PlusDays(1); }, false, false},
        {"one second more", [](CTmEvent& e) { e.End = e.End.PlusSeconds(1); }, true, false},
        {"an end that can't be read", [](CTmEvent& e) { e.End = DateTime::Invalid(); }, true, false},
        {"recurring", [](CTmEvent& e) { e.Recurring = 0; }, true, false},
        {"series", [](CTmEvent& e) { e.SeriesId = "{S}"; }, true, false},
        {"type", [](CTmEvent& e) { e.RecurrenceType = kDaily; }, true, false},
        {"first date", [](CTmEvent& e) { e.RecurrenceStart = e.RecurrenceStart.PlusSeconds(1); }, true, false},
        {"last date", [](CTmEvent& e) { e.RecurrenceEnd = e.RecurrenceEnd.PlusDays(-1); }, true, false},
        {"daily slot 2", [](CTmEvent& e) { e.DailyPattern.SetAt(2, 5); }, true, false},
        {"weekly slot 7", [](CTmEvent& e) { e.WeeklyPattern.SetAt(7, 1); }, true, false},
        {"monthly slot 6", [](CTmEvent& e) { e.MonthlyPattern.SetAt(6, 1); }, true, false},
        {"yearly slot 6", [](CTmEvent& e) { e.YearlyPattern.SetAt(6, 1); }, true, false},
        {"a list without its unset tail",
         [](CTmEvent& e) {
             e.YearlyPattern = {-1, -1};
         },
         false, false},
        {"a ninth weekly value", [](CTmEvent& e) { e.WeeklyPattern.AddTail(1); }, false, false},
        {"label", [](CTmEvent& e) { e.Label = "class"; }, false, true},
        {"description", [](CTmEvent& e) { e.Description = "x"; }, false, true},
        {"colour", [](CTmEvent& e) { e.BarColor = 2; }, false, true},
        {"whole day", [](CTmEvent& e) { e.AllDay = 0; }, false, false},
        {"reminder gone", [](CTmEvent& e) { e.Reminders.clear(); }, false, true},
        {"reminder text", [](CTmEvent& e) { e.Reminders[0].Message = "x"; }, false, true},
        {"reminder of another id", [](CTmEvent& e) { e.Reminders[0].ReminderId = "{Q}"; }, false, true},
    };
    for (const auto& [name, change, schedule, info] : changes) {
        const CTmEvent before = Sample();
        CTmEvent after = before;
        change(after);
        EXPECT_EQ(EventsDiffer(after, before), schedule) << name;
        EXPECT_EQ(EventsDiffer(before, after), schedule) << name;
        EXPECT_EQ(EventInfoDiffers(after, before), info) << name;
    }
}

TEST(Event, LeavesItsSeriesOnlyWhenNoListIsKept) {
    const auto filled = [] {
        CTmEvent event = Series(kDaily, {1, 0, 2}, Day(2011, 1, 3), Day(2011, 2, 3));
        event.Start = Day(2011, 1, 10, 9);
        event.SeriesId = "{S}";
        event.WeeklyPattern = {1, 2, 3};
        event.MonthlyPattern = {9};
        event.YearlyPattern.SetAt(6, 11);
        return event;
    };
    CTmEvent kept = filled();
    ResetRecurrence(kept, kDaily);
    EXPECT_EQ(kept.DailyPattern, (LongList{1, 0, 2}));
    EXPECT_EQ(kept.SeriesId, "{S}");
    EXPECT_EQ(kept.RecurrenceEnd, Day(2011, 2, 3));
    CTmEvent single = filled();
    ResetRecurrence(single, -1);
    EXPECT_EQ(single.DailyPattern, UnsetPattern(3));
    EXPECT_EQ(single.SeriesId, "");
    EXPECT_EQ(single.Recurring, 0);
    EXPECT_EQ(single.RecurrenceType, kNoSeries);
    EXPECT_EQ(single.RecurrenceStart, single.Start);
    EXPECT_EQ(single.RecurrenceEnd, single.Start);
    for (const CTmEvent& event : {kept, single}) {
        EXPECT_EQ(event.WeeklyPattern, UnsetPattern(8));
        EXPECT_EQ(event.MonthlyPattern, UnsetPattern(7));
        EXPECT_EQ(event.YearlyPattern, UnsetPattern(7));
    }
}

}  // namespace
}  // namespace lore
