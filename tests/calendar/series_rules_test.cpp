#include "calendar/series_rules.h"

#include <gtest/gtest.h>
#include <map>

#include "calendar/event_builder.h"

namespace lore {
namespace {

TEST(SeriesRules, GiveASeriesRoomForItsSecondDate) {
    struct Case {
        const char* name;
        int32_t type;
        LongList pattern;
        DateTime first, last, moved;
    };
    const DateTime noon = Day(2011, 1, 31, 12);
    const Case cases[] = {
        {"daily, too short", kDaily, {1, 0, 5}, noon, Day(2011, 2, 4, 12), Day(2011, 2, 5, 12)},
        {"daily, long enough", kDaily, {1, 0, 5}, noon, Day(2011, 2, 5, 12), Day(2011, 2, 5, 12)},
        {"daily, a second short of 5 days", kDaily, {1, 0, 5}, noon, Day(2011, 2, 5, 11, 59, 59), Day(2011, 2, 5, 12)},
        {"daily, empty field", kDaily, {1, 0, -1}, noon, noon, noon},
        {"weekly, too short", kWeekly, {2, 1}, noon, noon, Day(2011, 2, 13, 12)},
        {"weekly, never back", kWeekly, {2, 1}, noon, Day(2011, 2, 14, 6), Day(2011, 2, 14, 6)},
        {"weekly, backwards before", kWeekly, {1, 1}, noon, Day(2010, 1, 1), Day(2011, 2, 6, 12)},
        {"monthly, no such day", kMonthly, {1, 0, 1, 1, 0, 0, 2}, noon, noon, noon},
        {"monthly, second form", kMonthly, {0, 1, 1, 1, 0, 0, 2}, noon, noon, Day(2011, 3, 31, 12)},
        {"yearly", kYearly, {1}, noon, Day(2012, 1, 30, 12), Day(2012, 1, 31, 12)},
        {"yearly, 29 February", kYearly, {1}, Day(2012, 2, 29), Day(2012, 2, 29), Day(2012, 2, 29)},
        {"hostile N", kWeekly, {2147483647}, noon, noon, noon},
        {"no dates", kDaily, {1, 0, 5}, DateTime(), DateTime(), DateTime()}};
    for (const Case& c : cases) {
        CTmEvent event = Series(c.type, c.pattern, c.first, c.last);
        ApplyMinimumLength(event, c.type);
        EXPECT_EQ(event.RecurrenceEnd, c.moved) << c.name << " gave " << DateFieldText(event.RecurrenceEnd);
    }
}

TEST(SeriesRules, KeepTheEndAfterTheStart) {
    CTmEvent event = Series(kDaily, {1, 0, 1}, Day(2011, 3, 1, 9), Day(2011, 2, 1, 9));
    KeepEndAfterStart(event);
    EXPECT_EQ(event.RecurrenceEnd, Day(2011, 3, 1, 9));
    event.RecurrenceStart = Day(2011, 2, 1, 9);
    KeepEndAfterStart(event);
    EXPECT_EQ(event.RecurrenceEnd, Day(2011, 3, 1, 9));
}

TEST(SeriesRules, CorrectWhatIsTypedIntoANumberField) {
    const std::map<std::string, std::vector<const char*>> heldOfTyped = {
        {"", {"", "abc"}}, {"1", {"0", "000", "1"}}, {"999", {"999", "1000", "99999999999999999999"}},
        {"5", {"-5"}},     {"12", {"1a2 "}},         {"007", {"007"}}};
    for (const auto& [held, texts] : heldOfTyped)
        for (const char* const typed : texts)
            EXPECT_EQ(CorrectPatternInput(typed), held) << typed;
}

TEST(SeriesRules, FillUnsetPatternsFromTheStart) {
    CTmEvent event = Event("", "", Day(2011, 12, 30, 9), Day(2011, 12, 30, 10));  // a Friday, the fifth of its month
    for (int32_t type = -1; type <= 4; ++type)
        FillPatternDefaults(event, type);
    EXPECT_EQ(event.DailyPattern, (LongList{1, 0, 1}));
    EXPECT_EQ(event.WeeklyPattern, (LongList{1, 0, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(event.MonthlyPattern, (LongList{1, 0, 30, 1, 4, 5, 1}));
    EXPECT_EQ(event.YearlyPattern, (LongList{1, 0, 11, 30, 4, 5, 11}));
    event.Start = Day(2011, 1, 7);
    for (int32_t type = 0; type < kSeriesTypes; ++type)
        FillPatternDefaults(event, type);
    EXPECT_EQ(event.MonthlyPattern, (LongList{1, 0, 30, 1, 4, 5, 1})) << "what was set stays";
    event.MonthlyPattern = UnsetPattern(kMonthlySlots);
    FillPatternDefaults(event, kMonthly);
    EXPECT_EQ(event.MonthlyPattern, (LongList{1, 0, 7, 1, 0, 5, 1}));
}

}  // namespace
}  // namespace lore
