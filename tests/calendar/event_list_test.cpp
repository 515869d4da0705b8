#include "calendar/event_list.h"

#include <gtest/gtest.h>

#include "calendar/event_builder.h"

namespace lore {
namespace {

EventList Weekly() {
    EventList list;
    for (int i = 0; i < 4; ++i)
        list.push_back(Event("s" + std::to_string(i), "{S}", Day(2011, 1, 3 + 7 * i, 9), Day(2011, 1, 3 + 7 * i, 10)));
    list.insert(list.begin() + 1, Event("other", "{T}", Day(2011, 1, 20), Day(2011, 1, 20)));
    list.push_back(Event("twin", "{S}", Day(2011, 1, 10, 9), Day(2011, 1, 10, 10)));
    list.push_back(Event("single", "", Day(2011, 1, 10, 9), Day(2011, 1, 10, 10)));
    return list;
}

TEST(EventList, SelectsASeriesFromAnEventOn) {
    const EventList list = Weekly();
    EXPECT_EQ(Ids(SelectSeries(list, "{S}")), "s0 s1 s2 s3 twin");
    EXPECT_EQ(Ids(SelectSeries(list, "{S}", &list[2])), "s1 s2 s3") << "not the event of the same start";
    CTmEvent earlier = list[2];
    earlier.Start = Day(2011, 1, 9);
    EXPECT_EQ(Ids(SelectSeries(list, "{S}", &earlier)), "s1 s2 s3 twin") << "not the event as it was";
    EXPECT_EQ(Ids(SelectSeries(list, "", &list.back())), "single");
    EXPECT_EQ(Ids(SelectSeries(list, "")), "") << "single events are no series";
    EXPECT_EQ(Ids(SelectSeries(list, "{s}")), "");
}

TEST(EventList, CutsASeriesAtAnEvent) {
    EventList list = Weekly();
    EXPECT_EQ(Ids(RemoveSeries(list, list[2].SeriesId, &list[2])), "s1 s2 s3 twin");
    EXPECT_EQ(Ids(list), "s0 other single");
    EXPECT_EQ(list[0].RecurrenceEnd, Day(2011, 1, 9));
    EXPECT_EQ(list[1].RecurrenceEnd, Day(2011, 1, 20));
    EXPECT_EQ(list[2].RecurrenceEnd, Day(2011, 1, 10, 9));
}

TEST(EventList, CutsAtTheNewStartOfAMovedEvent) {
    EventList list = Weekly();
    CTmEvent moved = list[3];
    moved.Start = Day(2011, 1, 24, 9, 0, 1);
    EXPECT_EQ(Ids(RemoveSeries(list, "{S}", &moved)), "s2") << "the event itself, and s3 starts a second earlier";
    EXPECT_EQ(list[0].RecurrenceEnd, Day(2011, 1, 23));
}

TEST(EventList, RemovesAWholeSeriesAndNothingElse) {
    EventList list = Weekly();
    EXPECT_EQ(RemoveSeries(list, "{S}").size(), 5u);
    EXPECT_EQ(Ids(list), "other single");
    EXPECT_TRUE(RemoveSeries(list, "").empty());
    EXPECT_EQ(list.size(), 2u);
}

TEST(EventList, FindsTheFirstEventOfAnId) {
    EventList list = Weekly();
    list.push_back(Event("s0", "second", Day(2012, 1, 1), Day(2012, 1, 1)));
    EXPECT_EQ(FindEventIndex(list, "s0"), 0);
    EXPECT_EQ(FindEventIndex(list, "S0"), -1);
    EXPECT_TRUE(ReplaceEvent(list, Event("s0", "new", Day(2012, 1, 1), Day(2012, 1, 1))));
    EXPECT_EQ(list.front().SeriesId, "new");
    EXPECT_EQ(list.back().SeriesId, "second");
    EXPECT_FALSE(ReplaceEvent(list, Event("none", "", Day(2012, 1, 1), Day(2012, 1, 1))));
    ReplaceEvents(list, {Event("s1", "x", Day(2012, 1, 1), Day(2012, 1, 1)),
                         Event("none", "x", Day(2012, 1, 1), Day(2012, 1, 1))});
    EXPECT_EQ(list.size(), 8u);
    EXPECT_EQ(list[2].SeriesId, "x");
    EXPECT_TRUE(RemoveEvent(list, "s0"));
    EXPECT_EQ(list.back().EventId, "s0");
    EXPECT_FALSE(RemoveEvent(list, "none"));
}

TEST(EventList, SelectsWhatTouchesADay) {
    const std::tuple<const char*, DateTime, DateTime, bool> cases[] = {
        {"first second", Day(2011, 5, 9), Day(2011, 5, 9), true},
        {"last second", Day(2011, 5, 9, 23, 59, 59), Day(2011, 5, 10), true},
        {"next midnight", Day(2011, 5, 10), Day(2011, 5, 11), false},
        {"ends at midnight", Day(2011, 5, 8), Day(2011, 5, 9), true},
        {"ends a second before", Day(2011, 5, 8), Day(2011, 5, 8, 23, 59, 59), false},
        {"covers", Day(2011, 5, 8, 23, 59, 59), Day(2011, 5, 10), true},
        {"runs backwards over it", Day(2011, 5, 10), Day(2011, 5, 8), false},
        {"can't be read", DateTime::Invalid(), DateTime::Invalid(), false},
        {"begins then, end unknown", Day(2011, 5, 9, 8), DateTime::Invalid(), true},
    };
    for (const auto& [what, start, end, touches] : cases)
        EXPECT_EQ(SelectByDate({Event(what, "", start, end)}, Day(2011, 5, 9, 17)).size(), touches ? 1u : 0u) << what;
    EXPECT_TRUE(SelectByDate({Event("x", "", DateTime(), DateTime())}, DateTime()).empty());
}

}  // namespace
}  // namespace lore
