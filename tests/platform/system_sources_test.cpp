#include "platform/system_sources.h"

#include <gtest/gtest.h>

#include "support/set_variable.h"

namespace lore {
namespace {

constexpr int64_t kHour = 3600, kStep = 900;

/// A time zone by its rule, and what the rule says of 2026: how far its clocks are ahead of Coordinated Universal Time,
/// and from when to when they are further ahead.
struct Zone {
    const char* rule;
    int64_t usual, summer;
    DateTime summerBegins, summerEnds;  // in Coordinated Universal Time; the summer of the south lasts over new year

    int64_t AheadAt(int64_t utc) const {
        const bool isAfterBegin = utc >= summerBegins.Seconds(), isBeforeEnd = utc < summerEnds.Seconds();
        const bool isNorth = summerBegins.Seconds() < summerEnds.Seconds();
        return (isNorth ? isAfterBegin && isBeforeEnd : isAfterBegin || isBeforeEnd) ? summer : usual;
    }
};

const Zone kZones[] = {
    {"CET-1CEST,M3.5.0,M10.5.0/3", kHour, 2 * kHour, DateTime(2026, 3, 29, 1), DateTime(2026, 10, 25, 1)},
    {"EST5EDT,M3.2.0,M11.1.0", -5 * kHour, -4 * kHour, DateTime(2026, 3, 8, 7), DateTime(2026, 11, 1, 6)},
    // Turns its clocks by half an hour.
    {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", 21 * kHour / 2, 11 * kHour, DateTime(2026, 10, 3, 15, 30),
     DateTime(2026, 4, 4, 15)},
    {"UTC0", 0, 0, DateTime(2026, 1, 1), DateTime(2026, 1, 1)}};

TEST(LocalTime, IsReadByTheRuleOfItsDayAllYear) {
    for (const Zone& zone : kZones) {
        SCOPED_TRACE(zone.rule);
        const SetVariable set("TZ", zone.rule);
        int64_t leftOut = 0, shownTwice = 0;
        const int64_t end = DateTime(2026, 12, 31).Seconds();
        for (int64_t local = DateTime(2026, 1, 2).Seconds(); local < end; local += kStep) {
            const int64_t utc = LocalToUtc(DateTime::FromSeconds(local)).Seconds();
            const int64_t byUsual = local - zone.usual, bySummer = local - zone.summer;
            const bool isUsual = zone.AheadAt(byUsual) == zone.usual, isSummer = zone.AheadAt(bySummer) == zone.summer;
            leftOut += !isUsual && !isSummer ? kStep : 0;
            shownTwice += isUsual && isSummer && byUsual != bySummer ? kStep : 0;
            // Which of the two a time is read by that the clocks leave out or show twice is the system's choice.
            const bool isRight =
                isUsual == isSummer ? utc == byUsual || utc == bySummer : utc == (isUsual ? byUsual : bySummer);
            ASSERT_TRUE(isRight) << DateFieldText(DateTime::FromSeconds(local)) << " is read as "
                                 << DateFieldText(DateTime::FromSeconds(utc));
        }
        EXPECT_EQ(leftOut, zone.summer - zone.usual);
        EXPECT_EQ(shownTwice, zone.summer - zone.usual);
    }
}

TEST(LocalTime, IsReadUpToTheFirstAndTheLastYear) {
    const std::tuple<const char*, DateTime, DateTime> kCases[] = {
        {"UTC0", DateTime(100, 1, 1), DateTime(100, 1, 1)},
        {"UTC0", DateTime(9999, 12, 31, 23, 59, 59), DateTime(9999, 12, 31, 23, 59, 59)},
        // A second before 1970 is what a failure would look like, a second after 2038-01-19 an overflow.
        {"UTC0", DateTime(1969, 12, 31, 23, 59, 59), DateTime(1969, 12, 31, 23, 59, 59)},
        {"UTC0", DateTime(2038, 1, 19, 3, 14, 8), DateTime(2038, 1, 19, 3, 14, 8)},
        {kZones[0].rule, DateTime(100, 1, 1, 1), DateTime(100, 1, 1)},
        {kZones[0].rule, DateTime(100, 1, 1, 0, 59, 59), DateTime::Invalid()},
        {kZones[1].rule, DateTime(9999, 12, 31, 18, 59, 59), DateTime(9999, 12, 31, 23, 59, 59)},
        {kZones[1].rule, DateTime(9999, 12, 31, 19), DateTime::Invalid()},
        {kZones[1].rule, DateTime::Invalid(), DateTime::Invalid()},
        {kZones[1].rule, DateTime(), DateTime()}};
    for (const auto& [rule, local, utc] : kCases) {
        const SetVariable set("TZ", rule);
        EXPECT_EQ(LocalToUtc(local), utc) << rule << " " << DateFieldText(local);
    }
}

TEST(SystemClock, GoesByTheTimeZone) {
    const SystemClock clock;
    for (const auto& [rule, ahead] :
         {std::pair("UTC0", int64_t{0}), {"<+0545>-5:45", 23 * kHour / 4}, {"<-0930>9:30", -19 * kHour / 2}}) {
        const SetVariable set("TZ", rule);
        const int64_t before = clock.NowUtc().Seconds(), local = clock.Now().Seconds(),
                      behind = clock.NowUtc().Seconds();
        EXPECT_GE(local, before + ahead) << rule;
        EXPECT_LE(local, behind + ahead) << rule;
    }
}

}  // namespace
}  // namespace lore
