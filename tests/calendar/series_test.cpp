#include "calendar/series.h"

#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "support/read_world.h"

namespace lore {
namespace {

std::string Starts(const CTmEvent& event) {
    std::string text;
    for (const Occurrence& date : SeriesDates(event))
        text += (text.empty() ? "" : " ") + date.start.Format("%y%m%d");
    return text;
}

struct Case {
    const char* name;
    int32_t type;
    LongList pattern;
    DateTime first, last;
    const char* starts;
};

TEST(Series, ExpandsEachRhythm) {
    const Case cases[] = {
        {"every 2 days, end inclusive",
         kDaily,
         {1, 0, 2},
         Day(2011, 1, 3),
         Day(2011, 1, 9),
         "110103 110105 110107 110109"},
        {"end a second before the time",
         kDaily,
         {1, 0, 2},
         Day(2011, 1, 3, 9),
         Day(2011, 1, 9, 8, 59, 59),
         "110103 110105 110107"},
        {"weekdays from a Saturday", kDaily, {0, 1, 5}, Day(2011, 1, 1), Day(2011, 1, 4), "110103 110104"},
        {"weekdays over a weekend", kDaily, {0, 0}, Day(2011, 1, 7), Day(2011, 1, 11), "110107 110110 110111"},
        {"every second Monday from a Wednesday",
         kWeekly,
         {2, 0, 1, 0, 0, 0, 0, 0},
         Day(2011, 1, 5),
         Day(2011, 2, 5),
         "110117 110131"},
        {"the first week counts from its Sunday",
         kWeekly,
         {3, 1, 0, 0, 0, 0, 0, 1},
         Day(2011, 1, 8),
         Day(2011, 2, 20),
         "110108 110123 110129 110213 110219"},
        {"the 31st ends in February", kMonthly, {1, 0, 31, 1, 0, 0, 1}, Day(2011, 1, 31), Day(2011, 6, 30), "110131"},
        {"the 30th ends in February", kMonthly, {1, 0, 30, 1, 0, 0, 1}, Day(2011, 1, 5), Day(2011, 6, 30), "110130"},
        {"the 31st every 2 months",
         kMonthly,
         {1, 0, 31, 2, 0, 0, 1},
         Day(2011, 5, 1),
         Day(2012, 1, 31),
         "110531 110731"},
        {"the 15th from the 20th",
         kMonthly,
         {1, 0, 15, 1, 0, 0, 1},
         Day(2011, 1, 20),
         Day(2011, 3, 20),
         "110215 110315"},
        {"the 29th in a leap year",
         kMonthly,
         {1, 0, 29, 1, 0, 0, 1},
         Day(2012, 1, 1),
         Day(2012, 3, 31),
         "120129 120229 120329"},
        {"over the new year",
         kMonthly,
         {1, 0, 1, 5, 0, 0, 1},
         Day(2011, 9, 1),
         Day(2012, 12, 1),
         "110901 120201 120701 121201"},
        {"last Friday of five", kMonthly, {0, 1, 0, 1, 4, 5, 1}, Day(2011, 4, 22), Day(2011, 5, 31), "110429 110527"},
        {"fourth Friday of five", kMonthly, {0, 1, 0, 1, 3, 5, 1}, Day(2011, 4, 1), Day(2011, 5, 31), "110422 110527"},
        {"first Sunday every 3 months",
         kMonthly,
         {0, 1, 0, 1, 0, 0, 3},
         Day(2011, 1, 3),
         Day(2011, 9, 1),
         "110206 110501 110807"},
        {"March from January falls on the 1st",
         kYearly,
         {1, 0, 2, 20, 0, 0, 0},
         Day(2011, 1, 15),
         Day(2013, 12, 31),
         "110301 120301 130301"},
        {"March from 20 March",
         kYearly,
         {1, 0, 2, 1, 0, 0, 0},
         Day(2011, 3, 20),
         Day(2013, 3, 20),
         "110320 120320 130320"},
        {"a day of 0", kYearly, {1, 0, 2, 0, 0, 0, 0}, Day(2011, 3, 20), Day(2013, 3, 20), ""},
        {"29 February once", kYearly, {1, 0, 1, 29, 0, 0, 0}, Day(2012, 2, 29), Day(2020, 3, 20), "120229"},
        {"second Tuesday of November",
         kYearly,
         {0, 1, 0, 0, 1, 2, 10},
         Day(2011, 11, 9),
         Day(2013, 12, 31),
         "121113 131112"},
        {"last Monday of May", kYearly, {0, 1, 0, 0, 4, 1, 4}, Day(2011, 1, 1), Day(2012, 12, 31), "110530 120528"},
        {"end before start", kDaily, {1, 0, 1}, Day(2011, 1, 3), Day(2011, 1, 2), ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Starts(Series(c.type, c.pattern, c.first, c.last)), c.starts) << c.name;
}

TEST(Series, EndsForDamagedPatterns) {
    const DateTime first = Day(2011, 1, 3), last = Day(9999, 12, 31);
    const Case cases[] = {
        {"every 0 days", kDaily, {1, 0, 0}, first, last, "110103"},
        {"every -1 days", kDaily, {1, 0}, first, last, "110103"},
        {"every 2147483647 days", kDaily, {1, 0, 2147483647}, first, last, "110103"},
        {"0 weeks end with the first week", kWeekly, {0, 1, 0, 0, 0, 1, 0, 1}, first, last, "110106 110108"},
        {"lowest number of weeks", kWeekly, {-2147483647 - 1, 0, 0, 0, 0, 1, 0, 0}, first, last, "110106"},
        {"no weekday", kWeekly, {1}, first, last, ""},
        {"0 months", kMonthly, {1, 0, 5, 0, 0, 0, 1}, first, last, "110105"},
        {"2147483647 months", kMonthly, {1, 0, 5, 2147483647, 0, 0, 1}, first, last, "110105"},
        {"day 32", kMonthly, {1, 0, 32, 1}, first, last, ""},
        {"ordinal 5", kMonthly, {0, 1, 0, 1, 5, 1, 1}, first, last, ""},
        {"weekday 7", kMonthly, {0, 1, 0, 1, 1, 7, 1}, first, last, ""},
        {"-5 months, weekday form", kMonthly, {0, 1, 0, 1, 0, 1, -5}, first, last, "110103"},
        {"month 13", kYearly, {1, 0, 12, 1}, first, last, ""},
        {"an empty list", kYearly, {}, first, last, ""},
        {"type 4", 4, {1, 0, 1}, first, last, ""},
        {"type -1", -1, {1, 0, 1}, first, last, ""},
        {"no first date", kDaily, {1, 0, 1}, DateTime::Invalid(), last, ""},
        {"no last date", kDaily, {1, 0, 1}, first, DateTime::Invalid(), ""},
        {"neither", kDaily, {1, 0, 1}, DateTime(), DateTime(), ""},
    };
    for (const Case& c : cases) {
        CTmEvent event = Series(c.type < 0 || c.type > 3 ? 0 : c.type, c.pattern, c.first, c.last);
        event.RecurrenceType = c.type;
        EXPECT_EQ(Starts(event), c.starts) << c.name;
    }
    CTmEvent single = Series(kDaily, {1, 0, 1}, first, last);
    EXPECT_EQ(SeriesDates(single).size(), kMostOccurrences);
    single.Recurring = 2112;
    EXPECT_TRUE(SeriesDates(single).empty()) << "1 alone recurs";
}

TEST(Series, KeepsTimesOfDayAndTheSpanOfDays) {
    CTmEvent event = Series(kDaily, {1, 0, 1}, Day(2011, 2, 27, 17), Day(2011, 2, 28, 17));
    event.Start = Day(2010, 6, 1, 22, 30);
    event.End = Day(2010, 6, 2, 1, 0, 59);
    const std::vector<Occurrence> twoDays = {{Day(2011, 2, 27, 22, 30), Day(2011, 2, 28, 1, 0, 59)},
                                             {Day(2011, 2, 28, 22, 30), Day(2011, 3, 1, 1, 0, 59)}};
    EXPECT_EQ(SeriesDates(event), twoDays);
    event.End = Day(2010, 5, 31, 8);
    EXPECT_EQ(SeriesDates(event)[0].end, Day(2011, 2, 26, 8)) << "an event that ends before it starts";
    event.End = DateTime::Invalid();
    EXPECT_EQ(SeriesDates(event)[1], (Occurrence{Day(2011, 2, 28, 22, 30), DateTime::Invalid()}));
    event.Start = DateTime();
    EXPECT_EQ(SeriesDates(event)[1], (Occurrence{DateTime::Invalid(), DateTime::Invalid()}));
    event = Series(kDaily, {1, 0, 1}, Day(9999, 12, 30), Day(9999, 12, 31));
    event.End = event.Start.PlusDays(-1);
    event.Start = event.Start.PlusDays(-2);
    ASSERT_EQ(SeriesDates(event).size(), 2u);
    EXPECT_FALSE(SeriesDates(event)[1].end.IsValid());
}

TEST(Series, MakesRecordsWithIdsOfTheirOwn) {
    NumberedGuids guids;
    CTmEvent event = Series(kDaily, {1, 0, 1}, Day(2011, 1, 3), Day(2011, 1, 4));
    event.SeriesId = "old";
    event.Label = "Class";
    event.Reminders.resize(2);
    const EventList records = ExpandSeries(event, guids);
    EXPECT_EQ(Ids(records), "{GUID 2} {GUID 3}");
    for (const CTmEvent& record : records) {
        EXPECT_EQ(record.SeriesId, "{GUID 1}");
        EXPECT_EQ(record.Label, "Class");
        EXPECT_EQ(record.Reminders.size(), 2u);
        EXPECT_FALSE(EventInfoDiffers(record, event));
    }
    EXPECT_EQ(records[1].Start, Day(2011, 1, 4, 9, 5));
    EXPECT_EQ(records[1].End, Day(2011, 1, 4, 10, 0, 59));
}

TEST(Series, NumbersTheWeekdaysOfAMonth) {
    struct Ordinal {
        DateTime date;
        int plain, wantLast;
    };
    const Ordinal cases[] = {
        {Day(2011, 4, 1), 0, 0},       {Day(2011, 4, 22, 23, 59, 59), 3, 3},
        {Day(2011, 4, 29), 4, 4},      {Day(2011, 2, 22), 3, 4},
        {Day(2011, 2, 21), 2, 2},      {Day(2012, 2, 22), 3, 3},
        {Day(2012, 2, 29), 4, 4},      {Day(2011, 12, 25), 3, 4},
        {DateTime::Invalid(), -1, -1},
    };
    for (const Ordinal& c : cases) {
        EXPECT_EQ(NthWeekdayIndex(c.date, false), c.plain) << DateFieldText(c.date);
        EXPECT_EQ(NthWeekdayIndex(c.date, true), c.wantLast) << DateFieldText(c.date);
    }
}

}  // namespace
}  // namespace lore
