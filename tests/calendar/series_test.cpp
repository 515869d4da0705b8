#include "calendar/series.h"

#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "support/read_world.h"

namespace lore {
namespace {

std::string Starts(const CTmEvent& event) {
    std::string text;
    for (const Occurrence& date : SeriesDates(event).dates)
        text += (text.empty() ? "" : " ") + date.start.Format("%y%m%d");
    return text;
}

DateTime Date(const std::string& text) {
    const auto number = [&](size_t at) { return std::stoi(text.substr(at, 2)); };
    return Day(2000 + number(0), number(2), number(4));
}

TEST(Series, ExpandsEachRhythm) {
    // The bounds and the starts are days as "110103", the bounds with a '-' between.
    const std::tuple<const char*, int32_t, LongList, std::string, const char*> cases[] = {
        {"every 2 days, end inclusive", kDaily, {1, 0, 2}, "110103-110109", "110103 110105 110107 110109"},
        {"weekdays from a Saturday", kDaily, {0, 1, 5}, "110101-110104", "110103 110104"},
        {"weekdays over a weekend", kDaily, {0, 0}, "110107-110111", "110107 110110 110111"},
        {"every second Monday", kWeekly, {2, 0, 1, 0, 0, 0, 0, 0}, "110105-110205", "110117 110131"},
        {"from Sunday", kWeekly, {3, 1, 0, 0, 0, 0, 0, 1}, "110108-110220", "110108 110123 110129 110213 110219"},
        {"the 31st ends in February", kMonthly, {1, 0, 31, 1, 0, 0, 1}, "110131-110630", "110131"},
        {"the 30th ends in February", kMonthly, {1, 0, 30, 1, 0, 0, 1}, "110105-110630", "110130"},
        {"the 31st every 2 months", kMonthly, {1, 0, 31, 2, 0, 0, 1}, "110501-120131", "110531 110731"},
        {"the 15th from the 20th", kMonthly, {1, 0, 15, 1, 0, 0, 1}, "110120-110320", "110215 110315"},
        {"the 29th in a leap year", kMonthly, {1, 0, 29, 1, 0, 0, 1}, "120101-120331", "120129 120229 120329"},
        {"over the new year", kMonthly, {1, 0, 1, 5, 0, 0, 1}, "110901-121201", "110901 120201 120701 121201"},
        {"last Friday of five", kMonthly, {0, 1, 0, 1, 4, 5, 1}, "110422-110531", "110429 110527"},
        {"fourth Friday of five", kMonthly, {0, 1, 0, 1, 3, 5, 1}, "110401-110531", "110422 110527"},
        {"first Sunday every 3 months", kMonthly, {0, 1, 0, 1, 0, 0, 3}, "110103-110901", "110206 110501 110807"},
        {"March from January", kYearly, {1, 0, 2, 20, 0, 0, 0}, "110115-131231", "110301 120301 130301"},
        {"March from 20 March", kYearly, {1, 0, 2, 1, 0, 0, 0}, "110320-130320", "110320 120320 130320"},
        {"a day of 0", kYearly, {1, 0, 2, 0, 0, 0, 0}, "110320-130320", ""},
        {"29 February once", kYearly, {1, 0, 1, 29, 0, 0, 0}, "120229-200320", "120229"},
        {"second Tuesday of November", kYearly, {0, 1, 0, 0, 1, 2, 10}, "111109-131231", "121113 131112"},
        {"last Monday of May", kYearly, {0, 1, 0, 0, 4, 1, 4}, "110101-121231", "110530 120528"},
        {"end before start", kDaily, {1, 0, 1}, "110103-110102", ""},
    };
    for (const auto& [name, type, pattern, bounds, starts] : cases)
        EXPECT_EQ(Starts(Series(type, pattern, Date(bounds), Date(bounds.substr(7)))), starts) << name;
    EXPECT_EQ(Starts(Series(kDaily, {1, 0, 2}, Day(2011, 1, 3, 9), Day(2011, 1, 9, 8, 59, 59))), "110103 110105 110107")
        << "an end a second before the time";
}

TEST(Series, EndsForDamagedPatterns) {
    const DateTime first = Day(2011, 1, 3), last = Day(9999, 12, 31);
    const std::tuple<const char*, int32_t, LongList, const char*> cases[] = {
        {"every 0 days", kDaily, {1, 0, 0}, "110103"},
        {"every -1 days", kDaily, {1, 0}, "110103"},
        {"every 2147483647 days", kDaily, {1, 0, 2147483647}, "110103"},
        {"0 weeks end with the first week", kWeekly, {0, 1, 0, 0, 0, 1, 0, 1}, "110106 110108"},
        {"lowest number of weeks", kWeekly, {-2147483647 - 1, 0, 0, 0, 0, 1, 0, 0}, "110106"},
        {"no weekday", kWeekly, {1}, ""},
        {"0 months", kMonthly, {1, 0, 5, 0, 0, 0, 1}, "110105"},
        {"2147483647 months", kMonthly, {1, 0, 5, 2147483647, 0, 0, 1}, "110105"},
        {"day 32", kMonthly, {1, 0, 32, 1}, ""},
        {"ordinal 5", kMonthly, {0, 1, 0, 1, 5, 1, 1}, ""},
        {"weekday 7", kMonthly, {0, 1, 0, 1, 1, 7, 1}, ""},
        {"-5 months, weekday form", kMonthly, {0, 1, 0, 1, 0, 1, -5}, "110103"},
        {"month 13", kYearly, {1, 0, 12, 1}, ""},
        {"an empty list", kYearly, {}, ""},
        {"type 4", 4, {1, 0, 1}, ""},
        {"type -1", -1, {1, 0, 1}, ""},
    };
    for (const auto& [name, type, pattern, starts] : cases) {
        CTmEvent event = Series(type < 0 || type > 3 ? 0 : type, pattern, first, last);
        event.RecurrenceType = type;
        EXPECT_EQ(Starts(event), starts) << name;
    }
    for (const auto& [from, to] :
         {std::pair(DateTime::Invalid(), last), {first, DateTime::Invalid()}, {DateTime(), DateTime()}})
        EXPECT_EQ(Starts(Series(kDaily, {1, 0, 1}, from, to)), "") << "without its dates";
    CTmEvent single = Series(kDaily, {1, 0, 1}, first, last);
    EXPECT_EQ(SeriesDates(single).dates.size(), kMostOccurrences);
    EXPECT_TRUE(SeriesDates(single).isCut);
    single.RecurrenceEnd = first.PlusDays(kMostOccurrences - 1);
    EXPECT_EQ(SeriesDates(single).dates.size(), kMostOccurrences);
    EXPECT_FALSE(SeriesDates(single).isCut) << "just as many as a series can have";
    single.Recurring = 2112;
    EXPECT_TRUE(SeriesDates(single).dates.empty()) << "1 alone recurs";
}

TEST(Series, KeepsTimesOfDayAndTheSpanOfDays) {
    CTmEvent event = Series(kDaily, {1, 0, 1}, Day(2011, 2, 27, 17), Day(2011, 2, 28, 17));
    event.Start = Day(2010, 6, 1, 22, 30);
    event.End = Day(2010, 6, 2, 1, 0, 59);
    const std::vector<Occurrence> twoDays = {{Day(2011, 2, 27, 22, 30), Day(2011, 2, 28, 1, 0, 59)},
                                             {Day(2011, 2, 28, 22, 30), Day(2011, 3, 1, 1, 0, 59)}};
    EXPECT_EQ(SeriesDates(event).dates, twoDays);
    event.End = Day(2010, 5, 31, 8);
    EXPECT_EQ(SeriesDates(event).dates[0].end, Day(2011, 2, 26, 8)) << "an event that ends before it starts";
    event.End = DateTime::Invalid();
    EXPECT_EQ(SeriesDates(event).dates[1], (Occurrence{Day(2011, 2, 28, 22, 30), DateTime::Invalid()}));
    event.Start = DateTime();
    EXPECT_EQ(SeriesDates(event).dates[1], (Occurrence{DateTime::Invalid(), DateTime::Invalid()}));
    event = Series(kDaily, {1, 0, 1}, Day(9999, 12, 30), Day(9999, 12, 31));
    event.End = event.Start.PlusDays(-1);
    event.Start = event.Start.PlusDays(-2);
    ASSERT_EQ(SeriesDates(event).dates.size(), 2u);
    EXPECT_FALSE(SeriesDates(event).dates[1].end.IsValid());
}

TEST(Series, MakesRecordsWithIdsOfTheirOwn) {
    NumberedGuids guids;
    CTmEvent event = Series(kDaily, {1, 0, 1}, Day(2011, 1, 3), Day(2011, 1, 4));
    event.SeriesId = "old";
    event.Label = "Class";
    event.Reminders.resize(2);
    const EventList records = ExpandSeries(event, guids).records;
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
    const std::tuple<DateTime, int, int> cases[] = {
        {Day(2011, 4, 1), 0, 0},       {Day(2011, 4, 22, 23, 59, 59), 3, 3},
        {Day(2011, 4, 29), 4, 4},      {Day(2011, 2, 22), 3, 4},
        {Day(2011, 2, 21), 2, 2},      {Day(2012, 2, 22), 3, 3},
        {Day(2012, 2, 29), 4, 4},      {Day(2011, 12, 25), 3, 4},
        {DateTime::Invalid(), -1, -1},
    };
    for (const auto& [date, plain, wantLast] : cases) {
        EXPECT_EQ(NthWeekdayIndex(date, false), plain) << DateFieldText(date);
        EXPECT_EQ(NthWeekdayIndex(date, true), wantLast) << DateFieldText(date);
    }
}

}  // namespace
}  // namespace lore
