#include "calendar/event_text.h"

#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "calendar/series_text.h"
#include "support/each.h"

namespace lore {
namespace {

TEST(EventText, ShowsTheShortLineByDaysAndTimes) {
    const std::tuple<int32_t, DateTime, DateTime, const char*> cases[] = {
        {0, Day(2011, 2, 3, 9, 5), Day(2011, 2, 3, 10), "02/03/11 (9:05am - 10:00am) - Class"},
        {1, Day(2011, 2, 3, 9, 5), Day(2011, 2, 3, 10), "02/03/11 - Class"},
        {1, Day(2011, 2, 3), Day(2012, 2, 3), "(02/03/11 - 02/03/12) - Class"},
        {0, Day(2011, 2, 3, 0, 0), Day(2011, 2, 4, 15, 20), "(02/03/11 12:00am - 02/04/11 3:20pm) - Class"},
        {2112, Day(2011, 2, 3, 12), Day(2011, 2, 3, 23, 59), "02/03/11 (12:00pm - 11:59pm) - Class"},
    };
    for (const auto& [allDay, start, end, text] : cases) {
        CTmEvent event = Event("", "", start, end);
        event.AllDay = allDay;
        event.Label = "Class";
        EXPECT_EQ(ShortLine(event), text);
        EXPECT_EQ(HoverText(event), text);
    }
}

std::string Hover(const std::string& description) {
    CTmEvent event = Event("", "", Day(2011, 2, 3), Day(2011, 2, 3));
    event.Description = description;
    return HoverText(event);
}

TEST(EventText, WrapsAndCutsTheHoverText) {
    const std::string tens = "123456789 ", fifty = Repeated(tens, 5);
    std::string tenLines, twelveLines;
    for (int i = 1; i <= 12; ++i) {
        twelveLines += "line " + std::to_string(i) + "\n";
        if (i == 10)
            tenLines = twelveLines.substr(0, twelveLines.size() - 1);
    }
    EXPECT_EQ(Hover(fifty), fifty) << "the blank at column 50 stays";
    EXPECT_EQ(Hover(fifty + fifty + tens + tens), fifty + "123456789\n" + fifty + "123456789...")
        << "cut at the last wrap";
    EXPECT_EQ(Hover("a\tb"), "a   b");
    EXPECT_EQ(Hover("kept\nlost"), "kept...");
    EXPECT_EQ(Hover("kept\n"), "kept...");
    EXPECT_EQ(Hover("\nall"), "\nall") << "a break at the very front cuts nothing";
    EXPECT_EQ(Hover("a\r\nb"), "a\r...");
    EXPECT_EQ(Hover(twelveLines), tenLines + "...");
    const std::string umlauts = Repeated("\xC3\xA4", 50);
    EXPECT_EQ(Hover(umlauts + "\xC3\xA4 b c"), umlauts + "\xC3\xA4...") << "columns are characters";
    EXPECT_EQ(Hover(umlauts.substr(0, 98) + " bc"), umlauts.substr(0, 98) + " bc");
}

TEST(SeriesText, TellsEachRhythmInWords) {
    const std::tuple<int32_t, LongList, const char*> cases[] = {
        {kDaily, {1, 0, 1}, "Repeats every day"},
        {kDaily, {1, 0, 3}, "Repeats every 3 days"},
        {kDaily, {0, 1, 3}, "Repeats every weekday"},
        {kDaily, {1, 1, 0}, ""},
        {kDaily, {0, 0, 3}, ""},
        {kWeekly, {2, 0, 1, 0, 0, 0, 1, 0}, "Repeats every 2 weeks on MON, FRI"},
        {kWeekly, {1, 1, 0, 1, 1, 1, 0, 1}, "Repeats every week on SUN, TUES, WED, THUR, SAT"},
        {kWeekly, {1, 0, 0, 0, 0, 0, 0, 0}, ""},
        {kWeekly, {0, 1, 1, 1, 1, 1, 1, 1}, ""},
        {kMonthly, {1, 0, 15, 1, 0, 0, 1}, "Repeats on day 15 of every month"},
        {kMonthly, {1, 0, 31, 12, 0, 0, 1}, "Repeats on day 31 every 12 months"},
        {kMonthly, {0, 1, 15, 1, 4, 5, 1}, "Repeats on the last Friday of every month"},
        {kMonthly, {0, 1, 15, 1, 0, 0, 2}, "Repeats on the 1st Sunday every 2 months"},
        {kMonthly, {1, 1, 15, 0, 1, 6, 1}, "Repeats on the 2nd Saturday of every month"},
        {kMonthly, {0, 1, 15, 1, 5, 5, 1}, ""},
        {kMonthly, {0, 1}, ""},
        {kYearly, {1, 0, 2, 20, 0, 0, 0}, "Repeats on every March 20"},
        {kYearly, {0, 1, 2, 20, 3, 3, 11}, "Repeats on the 4th Wednesday of December"},
        {kYearly, {0, 0, 2, 20, 3, 3, 11}, ""},
        {kYearly, {1, 0, 12, 20, 0, 0, 0}, ""},
        {kYearly, {}, ""},
    };
    for (const auto& [type, pattern, text] : cases) {
        const std::string tail = *text ? " from 01/03/11 to 03/31/11" : "";
        EXPECT_EQ(SeriesSummary(Series(type, pattern, Day(2011, 1, 3), Day(2011, 3, 31))), text + tail);
    }
    CTmEvent damaged = Event("", "", Day(2011, 1, 3), Day(2011, 1, 3));
    for (const int32_t type : {-1, 4, 2147483647})
        EXPECT_EQ((damaged.RecurrenceType = type, SeriesSummary(damaged)), "");
}

}  // namespace
}  // namespace lore
