#include <cmath>
#include <set>

#include "calendar/bar_colors.h"
#include "calendar/calendar_fixture.h"
#include "calendar/day_view.h"
#include "calendar/month_view.h"
#include "notes/file_faults.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

TEST(MonthGrid, HasTheRowsThatItsMonthNeeds) {
    const std::tuple<int, int, int, DateTime> cases[] = {
        {2010, 10, 6, Day(2010, 9, 26)},  // 31 days from a Friday
        {2011, 4, 5, Day(2011, 3, 27)},   // 30 days from a Friday
        {2011, 10, 6, Day(2011, 9, 25)},  // 31 days from a Saturday
        {2012, 9, 6, Day(2012, 8, 26)},   // 30 days from a Saturday
        {2009, 2, 5, Day(2009, 2, 1)},    // 28 days from a Sunday, with a week of March
        {2020, 2, 5, Day(2020, 1, 26)},   // 29 days from a Saturday
        {9999, 12, 5, Day(9999, 11, 28)}};
    for (const auto& [year, month, rows, first] : cases) {
        const MonthGrid grid(Day(year, month, 17));
        EXPECT_EQ(grid.Rows(), rows) << year << " " << month;
        EXPECT_EQ(grid.FirstMoment(), first);
        EXPECT_EQ(grid.CellOf(first), 0);
    }
    EXPECT_LT(MonthGrid(Day(2020, 2, 1)).CellOf(DateTime::Invalid()), 0);
}

std::string Shown(const std::vector<BarPiece>& bars) {
    std::string text;
    for (const BarPiece& bar : bars)
        text += std::to_string(bar.row) + ":" + std::to_string(bar.firstColumn) + "-" + std::to_string(bar.lastColumn) +
                " lane " + std::to_string(bar.lane) + (bar.roundLeft ? " (" : " [") + bar.text +
                (bar.roundRight ? ")" : "]") + (bar.goesOn ? ">>>" : "") + "\n";
    return text;
}

CTmEvent Labelled(const char* label, const DateTime& start, const DateTime& end, bool allDay) {
    CTmEvent event = Event(label, "", start, end);
    event.Label = label;
    event.AllDay = allDay ? 1 : 0;
    return event;
}

TEST(MonthGrid, DrawsAnEventInEachRowThatItTouches) {
    const MonthGrid grid(Day(2026, 3, 1));  // 1 March is a Sunday: rows to 4 April
    EXPECT_EQ(Shown(LayOutBars(grid, {Labelled("Short", Day(2026, 3, 7, 9, 5), Day(2026, 3, 7, 10), false),
                                      Labelled("Trip", Day(2026, 3, 6), Day(2026, 3, 9, 23, 59, 59), true),
                                      Labelled("Before", Day(2026, 2, 20), Day(2026, 3, 1), true),
                                      Labelled("On", Day(2026, 4, 3, 20), Day(2026, 4, 8), false),
                                      Labelled("Far", Day(2026, 5, 3), Day(2026, 5, 4), false),
                                      Labelled("Gone", Day(2026, 2, 3), Day(2026, 2, 28), false),
                                      Labelled("Damaged", Day(2026, 3, 3), DateTime::Invalid(), false),
                                      Labelled("None", DateTime::Invalid(), Day(2026, 3, 3), false)})),
              "0:0-0 lane 0 [Before)\n0:2-2 lane 0 (12:00AM - Damaged)\n0:5-6 lane 0 (Trip]\n"
              "0:6-6 lane 1 (9:05AM - Short)\n1:0-1 lane 0 [Trip)\n4:5-6 lane 0 (8:00PM - On]>>>\n");
}

TEST(MonthGrid, PutsNoTwoBarsOnOnePlace) {
    const MonthGrid grid(Day(2026, 3, 1));
    EventList events;
    for (int i = 0; i < 300; ++i)
        events.push_back(Labelled("x", Day(2026, 2, 20).PlusDays(i * 7 % 45),
                                  Day(2026, 2, 20).PlusDays(i * 7 % 45 + i % 9), i % 2 == 0));
    std::set<std::tuple<int, int, int>> taken;
    for (const BarPiece& bar : LayOutBars(grid, events)) {
        for (int column = bar.firstColumn; column <= bar.lastColumn; ++column)
            EXPECT_TRUE(taken.emplace(bar.row, column, bar.lane).second);
    }
}

TEST(BarColors, CarryWhiteText) {
    const auto linear = [](unsigned part) {
        const double value = part / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    std::set<std::string> names;
    for (const BarColor& bar : BarColors()) {
        const double light = 0.2126 * linear(RedOf(bar.color)) + 0.7152 * linear(GreenOf(bar.color)) +
                             0.0722 * linear(BlueOf(bar.color));
        EXPECT_GE(1.05 / (light + 0.05), 4.5) << bar.name;
        EXPECT_TRUE(names.insert(bar.name).second);
    }
    EXPECT_EQ(&BarColorOf(0), &BarColors()[0]);
    EXPECT_EQ(&BarColorOf(20), &BarColors()[19]);
    EXPECT_EQ(&BarColorOf(21), &BarColors()[0]);
}

using Months = CalendarTest;

TEST_F(Months, TheSelectionMovesAndTurnsTheMonth) {
    MonthView view(world);
    EXPECT_EQ(view.CurrentDay(), Day(2026, 3, 14));
    view.MoveBy(7, true);
    EXPECT_EQ(view.SelectedDays(), std::pair(Day(2026, 3, 14), Day(2026, 3, 21)));
    view.MoveBy(-8, true);
    EXPECT_EQ(view.SelectedDays(), std::pair(Day(2026, 3, 13), Day(2026, 3, 14)));
    EXPECT_FALSE(view.IsSelected(view.CurrentCell() - 1));
    view.MoveBy(-14, false);
    EXPECT_EQ(view.CurrentDay(), Day(2026, 2, 27));
    EXPECT_EQ(view.Grid().Month(), Day(2026, 2, 1));
    view.MoveBy(2, false);
    EXPECT_EQ(view.Grid().Month(), Day(2026, 2, 1)) << "a cell of the month after is a cell too";
    view.TurnMonths(-2);
    EXPECT_EQ(view.CurrentDay(), Day(2025, 12, 1));
    view.MoveBy(100, true);
    EXPECT_EQ(view.CurrentDay(), Day(2025, 12, 1)) << "a selection stays among the cells";
    for (const auto& [last, months] : {std::pair(Day(9998, 12, 1), 1), std::pair(Day(101, 1, 1), -1)}) {
        view.ShowMonth(last);
        view.TurnMonths(months);
        EXPECT_EQ(view.Grid().Month(), last);
        EXPECT_TRUE(view.Grid().FirstMoment().IsValid() && view.Grid().LastMoment().IsValid());
    }
    clock.now = Day(2026, 4, 1);
    view.SelectToday();
    EXPECT_EQ(std::pair(view.Today(), view.CurrentDay()), std::pair(clock.now, clock.now)) << "midnight has passed";
}

TEST_F(Months, ALinkToNothingIsToldAsAFault) {
    std::filesystem::create_symlink("nowhere", world.eventFile);
    std::filesystem::create_symlink("nowhere", world.reminderFile);
    MonthView view(world);
    EXPECT_THAT(Each(faults.faults, &Fault::what), testing::IsSupersetOf({kEventsUnread, kRemindersUnread}));
}

TEST_F(Months, ACellTellsWhatFallsOnIt) {
    CTmEvent trip = Labelled("Trip", Day(2026, 3, 13), Day(2026, 3, 15, 23, 59, 59), true);
    CTmEvent lesson = Labelled("Lesson", Day(2026, 3, 14, 9, 5), Day(2026, 3, 14, 10), false);
    trip.Reminders = {ReminderFor(trip, ReminderType::Popup, 0)};
    Put({lesson, trip});
    const MonthView view(world);
    EXPECT_EQ(view.CellText(13), "Saturday, March 14 2026, today, 2 events: Trip; 9:05AM - Lesson");
    EXPECT_EQ(view.CellText(12), "Friday, March 13 2026, 1 event, 1 reminder: Trip");
    EXPECT_EQ(view.CellText(33), "Friday, April 03 2026, other month, no events");
}

TEST_F(Months, ADayListsItsEventsAndReminders) {
    CTmEvent night = Labelled("Night", Day(2026, 3, 13, 22), Day(2026, 3, 14, 6), false);
    CTmEvent around = Labelled("Around", Day(2026, 3, 1), Day(2026, 3, 30, 23, 59, 59), true);
    night.Reminders = {ReminderFor(night, ReminderType::Email, -60), ReminderFor(night, ReminderType::Popup, 30)};
    Put({night, around, Labelled("Other", Day(2026, 3, 15), Day(2026, 3, 15), false)});
    const DayView day(world, Day(2026, 3, 13, 12));
    EXPECT_EQ(day.Title(), "Friday, March 13 2026");
    ASSERT_EQ(day.Events().size(), 2u);
    EXPECT_EQ(day.StartOf(day.Events()[0]) + "|" + day.EndOf(day.Events()[0]), "10:00PM|03/14/26");
    EXPECT_EQ(day.StartOf(day.Events()[1]) + "|" + day.EndOf(day.Events()[1]), "ALL|DAY");
    ASSERT_EQ(day.Reminders().size(), 2u);
    EXPECT_EQ(day.Reminders()[0].SendTime, Day(2026, 3, 13, 21, 30));
}

}  // namespace
}  // namespace lore
