#include "app/sample_note.h"

#include <gtest/gtest.h>
#include <set>

#include "app/sample_calendar.h"
#include "app/sample_categories.h"
#include "classify/forest_builder.h"
#include "support/read_world.h"

namespace lore {
namespace {

TEST(SampleNote, ReadsHeadsAndTextsOfAllNotesInAFile) {
    const auto notes = ParseSampleNotes(
        "stray\n== One: a title\ncreated: 2024-02-29 23:59\nedited: never\nsource: key | p. 3: 4\nsource: other\n"
        "set2: A/B C\nunknown: x\nno colon\npicture: a.png | Title | 0.75\nlink: https://example.org/?a=1 | Site\n\n"
        "# created: not a head\n\nlast\n== Two\n");
    ASSERT_EQ(notes.size(), 2u);
    const SampleNote& one = notes[0];
    EXPECT_EQ(one.title, "One: a title");
    EXPECT_EQ(one.created, DateTime(2024, 2, 29, 23, 59, 0));
    EXPECT_EQ(one.edited.GetStatus(), DateTime::Status::Invalid);
    ASSERT_EQ(one.sources.size(), 2u);
    EXPECT_EQ(one.sources[0].info, "p. 3: 4");
    EXPECT_EQ(one.sources[1].info, "");
    EXPECT_EQ(one.categories[1], "A/B C");
    ASSERT_EQ(one.attachments.size(), 2u);
    EXPECT_EQ(one.attachments[0].zoom, 0.75);
    EXPECT_EQ(one.attachments[1].target, "https://example.org/?a=1");
    EXPECT_EQ(one.attachments[1].kind, SampleAttachment::Kind::Link);
    EXPECT_EQ(one.text, "# created: not a head\n\nlast\n");
    EXPECT_EQ(notes[1].text, "");
}

TEST(SampleCategories, NumbersTheForestBehindTheLastIdAndFindsPaths) {
    int last = 40;
    const CProCategoryList forest = ReadSampleCategories("A\n  B\n    C\n  D\n\nE\n", last);
    EXPECT_EQ(last, 45);
    ASSERT_EQ(forest.Roots().size(), 3u);
    EXPECT_TRUE(forest.Roots()[0].IsUnassigned());
    const CProCategoryTree path = SampleCategoryPath(forest, "A/B/C");
    EXPECT_EQ(Shape(path), "41:A(42:B(43:C))");
    EXPECT_EQ(path.children[0].parentID, 41);
    EXPECT_EQ(DeepestCategoryID(SampleCategoryPath(forest, "A/D")), 44);
    for (const char* unknown : {"", "B", "A/C", "A/B/C/D", "a"})
        EXPECT_TRUE(SampleCategoryPath(forest, unknown).IsEmptyPath()) << unknown;
}

TEST(SampleCategories, StepsOverTheReservedId) {
    int last = kUnassignedID - 1;
    const CProCategoryList forest = ReadSampleCategories("A\nB\n", last);
    for (size_t root = 1; root < forest.Roots().size(); ++root)
        EXPECT_NE(forest.Roots()[root].id, kUnassignedID);
    EXPECT_NE(forest.Roots()[1].id, forest.Roots()[2].id);
}

auto Calendar(const char* json) {
    ReadWorld world;  // 14 March 2026, a Saturday, 15:09:26
    return ReadSampleCalendar(json, world.context);
}

TEST(SampleCalendar, CountsDaysFromNow) {
    const auto calendar =
        Calendar(R"({"events":[{"day":-1,"label":"a","days":3},{"day":2,"from":"09:05","to":"10:00","color":7}]})");
    ASSERT_EQ(calendar.events.size(), 2u);
    const CTmEvent& whole = calendar.events[0];
    EXPECT_EQ(whole.AllDay, 1);
    EXPECT_EQ(std::pair(whole.Start, whole.End), std::pair(DateTime(2026, 3, 13), DateTime(2026, 3, 15, 23, 59, 59)));
    const CTmEvent& timed = calendar.events[1];
    EXPECT_EQ(std::tuple(timed.AllDay, timed.Start, timed.End, timed.BarColor),
              std::tuple(0, DateTime(2026, 3, 16, 9, 5, 0), DateTime(2026, 3, 16, 10, 0, 59), 7));
    EXPECT_EQ(timed.RecurrenceEnd, timed.Start);
}

TEST(SampleCalendar, ExpandsASeriesOnItsWeekday) {
    const auto calendar =
        Calendar(R"({"series":[{"day":0,"weekday":"Thursday","weeks":4,"from":"18:00","to":"20:00","remind":[30]}]})");
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
    const auto calendar = Calendar(
        R"({"events":[{"day":0,"from":"17:00","to":"18:00","remind":[120,60,30]},{"day":-3,"remind":[0]}],
            "reminders":[{"day":0,"at":"08:00","message":"past"},{"day":1,"at":"08:00","message":"next"}]})");
    ASSERT_EQ(calendar.reminders.size(), 2u);
    EXPECT_EQ(calendar.reminders[0].PriorMinutes, 30);
    EXPECT_EQ(calendar.reminders[0].SendTime, DateTime(2026, 3, 14, 16, 30, 0));
    EXPECT_EQ(calendar.reminders[0].EventStart, DateTime(2026, 3, 14, 17, 0, 0));
    EXPECT_EQ(calendar.reminders[1].Message, "next");
    EXPECT_EQ(calendar.reminders[1].EventId, "");
}

}  // namespace
}  // namespace lore
