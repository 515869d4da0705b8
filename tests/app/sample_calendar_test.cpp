#include "app/sample_calendar.h"

#include <gtest/gtest.h>
#include <set>

#include "support/read_world.h"

namespace lore {
namespace {

TEST(SampleCalendar, CountsDaysFromNow) {
    ReadWorld world;  // 14 March 2026, a Saturday, 15:09:26
    const auto calendar = ReadSampleCalendar(
        R"({"events":[{"day":-1,"label":"a","days":3},{"day":2,"from":"09:05","to":"10:00","color":7}]})",
        world.context);
    ASSERT_EQ(calendar.events.size(), 2u);
    const CTmEvent& whole = calendar.events[0];
    EXPECT_EQ(whole.AllDay, 1);
    EXPECT_EQ(whole.Start, DateTime(2026, 3, 13));
    EXPECT_EQ(whole.End, DateTime(2026, 3, 15, 23, 59, 59));
    const CTmEvent& timed = calendar.events[1];
    EXPECT_EQ(timed.AllDay, 0);
    EXPECT_EQ(timed.Start, DateTime(2026, 3, 16, 9, 5, 0));
    EXPECT_EQ(timed.End, DateTime(2026, 3, 16, 10, 0, 59));
    EXPECT_EQ(timed.RecurrenceEnd, timed.Start);
    EXPECT_EQ(timed.BarColor, 7);
}

TEST(SampleCalendar, ExpandsASeriesOnItsWeekday) {
    ReadWorld world;
    const auto calendar = ReadSampleCalendar(
        R"({"series":[{"day":0,"weekday":"Thursday","weeks":4,"from":"18:00","to":"20:00","remind":[30]}]})",
        world.context);
    ASSERT_EQ(calendar.events.size(), 4u);
    EXPECT_EQ(calendar.events[0].Start, DateTime(2026, 3, 19, 18, 0, 0));
    EXPECT_EQ(calendar.events[3].Start, DateTime(2026, 4, 9, 18, 0, 0));
    std::set<std::string> ids, series;
    for (const CTmEvent& event : calendar.events) {
        ids.insert(event.EventId);
        series.insert(event.SeriesId);
        EXPECT_EQ(RemindersOfEvent(calendar.reminders, event.EventId).size(), 1u);
    }
    EXPECT_EQ(ids.size(), 4u);
    EXPECT_EQ(series.size(), 1u);
}

TEST(SampleCalendar, LeavesOutPopupsThatWouldComeAtOnce) {
    ReadWorld world;
    const auto calendar = ReadSampleCalendar(
        R"({"events":[{"day":0,"from":"17:00","to":"18:00","remind":[120,60,30]},{"day":-3,"remind":[0]}],
            "reminders":[{"day":0,"at":"08:00","message":"past"},{"day":1,"at":"08:00","message":"next"}]})",
        world.context);
    ASSERT_EQ(calendar.reminders.size(), 2u);
    EXPECT_EQ(calendar.reminders[0].PriorMinutes, 30);
    EXPECT_EQ(calendar.reminders[0].SendTime, DateTime(2026, 3, 14, 16, 30, 0));
    EXPECT_EQ(calendar.reminders[0].EventStart, DateTime(2026, 3, 14, 17, 0, 0));
    EXPECT_EQ(calendar.reminders[1].Message, "next");
    EXPECT_EQ(calendar.reminders[1].EventId, "");
}

TEST(SampleCalendar, SurvivesWhatIsNoCalendar) {
    ReadWorld world;
    for (const char* text : {"", "{", "[]", "7", R"({"events":7})", R"({"series":[{"weekday":"Someday"}]})"})
        EXPECT_TRUE(ReadSampleCalendar(text, world.context).events.empty()) << text;
}

}  // namespace
}  // namespace lore
