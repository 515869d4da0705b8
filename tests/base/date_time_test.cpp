#include "base/date_time.h"

#include <array>
#include <gtest/gtest.h>

namespace lore {
namespace {

TEST(DateTime, WalksEveryDayOfItsYears) {
    DateTime day(100, 1, 1, 23, 59, 59);
    int weekday = day.DayOfWeek();
    int count = 0;
    while (day.IsValid()) {
        ASSERT_EQ(day.DayOfWeek(), weekday);
        ASSERT_EQ(DateTime(day.Year(), day.Month(), day.Day(), 23, 59, 59), day);
        weekday = weekday % 7 + 1;
        day = day.PlusDays(1);
        ++count;
    }
    EXPECT_EQ(count, 3615900) << "from 1 January 100 to 31 December 9999";
    EXPECT_EQ(DateTime(2011, 1, 3).DayOfWeek(), 2);
}

TEST(DateTime, IsValidOnlyWhereEachNumberIs) {
    using Numbers = std::array<int, 6>;
    for (const Numbers& limits : {Numbers{100, 1, 1, 0, 0, 0}, Numbers{9999, 12, 31, 23, 59, 59}}) {
        const int step = limits[1] == 1 ? -1 : 1;
        for (size_t off = 0; off <= 6; ++off) {
            const auto n = [&](size_t place) { return limits[place] + (place == off ? step : 0); };
            EXPECT_EQ(DateTime(n(0), n(1), n(2), n(3), n(4), n(5)).IsValid(), off == 6) << off;
        }
    }
    const std::pair<int, bool> leapYears[] = {{1900, false}, {2000, true}, {2023, false}, {2024, true}};
    for (const auto& [year, isLeap] : leapYears)
        EXPECT_EQ(DateTime(year, 2, 29).IsValid(), isLeap) << year;
    EXPECT_FALSE(DateTime(2024, 4, 31).IsValid());
}

TEST(DateTime, FormatsWithEnglishNames) {
    const DateTime date(2011, 2, 3, 15, 20, 9);
    EXPECT_EQ(date.Format("%m/%d/%y %I:%M%p|%A, %B %d %Y|%d %b. %Y|%H:%S %a 100%%"),
              "02/03/11 03:20PM|Thursday, February 03 2011|03 Feb. 2011|15:09 Thu 100%");
    EXPECT_EQ(date.Format("%"), "%") << "nothing behind it";
    EXPECT_EQ(DateTime(2011, 2, 3, 0, 5).Format("%I:%M %p"), "12:05 AM");
    EXPECT_EQ(DateTime::Invalid().Format("%Y"), "Invalid DateTime");
}

TEST(DateTime, ComparesByStatusFirst) {
    const DateTime early(1850, 1, 1);
    const DateTime late(1850, 1, 1, 0, 0, 1);
    EXPECT_TRUE(early.IsEarlierOrEqual(late) && early.IsEarlierOrEqual(early) && !late.IsEarlierOrEqual(early));
    EXPECT_TRUE(DateTime().IsEarlierOrEqual(DateTime()));
    for (const DateTime& other : {DateTime::Invalid(), late})
        EXPECT_FALSE(DateTime::Invalid().IsEarlierOrEqual(other) || other.IsEarlierOrEqual(DateTime::Invalid()));
    EXPECT_FALSE(DateTime().IsEarlierOrEqual(late)) << "a null date is no early one";
}

TEST(DateTime, StaysWithinItsYears) {
    EXPECT_FALSE(DateTime(9999, 12, 31).PlusDays(1).IsValid() || DateTime(100, 1, 1).PlusDays(-1).IsValid());
    for (const int64_t seconds : {INT64_MAX, INT64_MIN})
        EXPECT_FALSE(DateTime(2000, 1, 1).PlusSeconds(seconds).IsValid());
    EXPECT_FALSE(DateTime(2000, 1, 1).PlusDays(INT64_MIN).IsValid());
    EXPECT_FALSE(DateTime::FromSeconds((int64_t{1} << 32) * 31'556'952).IsValid())
        << "1970 by the low half of its year";
    EXPECT_EQ(DateTime(2011, 7, 12).PlusSeconds(86'399), DateTime(2011, 7, 12, 23, 59, 59));
    EXPECT_EQ(DateTime(2011, 7, 12).PlusSeconds(86'400), DateTime(2011, 7, 13));
    for (const int64_t amount : {int64_t{1}, INT64_MAX})
        EXPECT_TRUE(DateTime().PlusDays(amount).IsNull() && DateTime().PlusSeconds(amount).IsNull());
    EXPECT_TRUE(DateTime().Midnight().IsNull());
    EXPECT_EQ(DateTime().DayOfWeek(), 0);
    EXPECT_EQ(DateTime(2011, 7, 12, 23, 59, 59).Midnight(), DateTime(2011, 7, 12));
}

}  // namespace
}  // namespace lore
