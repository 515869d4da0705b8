#include "calendar/event_editor.h"

#include "calendar/calendar_fixture.h"
#include "calendar/date_arithmetic.h"
#include "calendar/reminder_address.h"
#include "calendar/reminder_editor.h"
#include "calendar/ten_minutes.h"
#include "calendar/typed_time.h"
#include "support/each.h"

namespace lore {
namespace {

using Texts = std::vector<std::string>;
using Span = std::pair<DateTime, DateTime>;

class Editors : public CalendarTest {
protected:
    /// An event of one day from 9 to 10.
    EventEditor Timed() {
        EventEditor editor = EventEditor::ForNewEvent(world, std::pair(Day(2026, 4, 10), Day(2026, 4, 10)));
        editor.SetAllDay(false);
        editor.PlaceAt(Day(2026, 4, 10, 9), Day(2026, 4, 10, 10));
        return editor;
    }
    static Span SpanOf(const EventEditor& editor) { return {editor.Event().Start, editor.Event().End}; }
    static Span SeriesOf(const EventEditor& editor) {
        return {editor.Event().RecurrenceStart, editor.Event().RecurrenceEnd};
    }
};

TEST(TenMinutes, AreTheStepsOfATime) {
    const int cases[][6] = {{9, 0, 9, 1, 9, 10},      {9, 10, 9, 9, 9, 0},     {9, 50, 9, 51, 10, 0},
                            {9, 50, 9, 49, 9, 40},    {9, 59, 9, 0, 10, 10},   {9, 0, 9, 59, 8, 50},
                            {9, 0, 9, 4, 9, 0},       {9, 0, 9, 5, 9, 10},     {9, 0, 9, 14, 9, 10},
                            {9, 0, 9, 15, 9, 20},     {9, 0, 9, 25, 9, 30},    {9, 0, 9, 54, 9, 50},
                            {9, 0, 9, 55, 10, 0},     {9, 0, 10, 0, 10, 0},    {9, 0, 10, 1, 10, 0},
                            {23, 0, 23, 55, 24, 0},   {23, 50, 23, 51, 24, 0}, {9, 30, 14, 30, 14, 30},
                            {23, 59, 47, 59, 47, 59}, {9, 3, 33, 3, 33, 3},    {9, 50, 33, 51, 33, 50}};
    for (const auto& [hour, minute, toHour, toMinute, expectedHour, expectedMinute] : cases) {
        const DateTime day = Day(2026, 4, 10);
        EXPECT_EQ(
            SteppedTime(day.PlusSeconds(hour * 3600 + minute * 60), day.PlusSeconds(toHour * 3600 + toMinute * 60)),
            day.PlusSeconds(expectedHour * 3600 + expectedMinute * 60))
            << hour << ":" << minute << " to " << toHour << ":" << toMinute;
    }
}

TEST(TypedTimes, AreReadInEachFormWhileTheyAreTyped) {
    const TimeOfDay morning{9, 20}, evening{21, 20};
    // What is typed while a time shows, and the hour and minute that are read; an hour of -1: no time.
    const std::tuple<const char*, TimeOfDay, int, int> cases[] = {
        {"", evening, 21, 20},     {"9", {0, 0}, 9, 0},          {"8", evening, 20, 20},
        {"08", evening, 8, 20},    {"12", morning, 12, 20},      {"12a", morning, 0, 20},
        {"0", evening, 0, 20},     {"14", morning, 14, 20},      {"14:", morning, 14, 20},
        {"14:3", morning, 14, 3},  {"14:30", morning, 14, 30},   {"14.30", morning, 14, 30},
        {"1430", morning, 14, 30}, {"143", morning, 1, 43},      {"190", morning, 19, 0},
        {"930", evening, 21, 30},  {"0930", evening, 9, 30},     {"093", evening, 9, 3},
        {"93", morning, 9, 3},     {"2:30p", morning, 14, 30},   {"2:30 PM", morning, 14, 30},
        {"230am", evening, 2, 30}, {"12p", morning, 12, 20},     {"14p", morning, 14, 20},
        {"2359", morning, 23, 59}, {"14a", morning, -1, 0},      {"24", morning, 2, 4},
        {"2400", morning, -1, 0},  {"9:60", morning, -1, 0},     {"975", morning, -1, 0},
        {"12345", morning, -1, 0}, {"1:2:3", morning, -1, 0},    {":30", morning, -1, 0},
        {"p", morning, -1, 0},     {"9pp", morning, -1, 0},      {"9p3", morning, -1, 0},
        {"x", morning, -1, 0},     {"9\xC3\xA9", morning, -1, 0}};
    for (const auto& [typed, shown, hour, minute] : cases) {
        const std::optional<TimeOfDay> read = ReadTypedTime(typed, shown);
        EXPECT_EQ(read ? read->hour : -1, hour) << typed;
        EXPECT_EQ(read ? read->minute : 0, minute) << typed;
    }
}

TEST_F(Editors, TheEndStaysAfterTheStart) {
    const DateTime nine = Day(2026, 4, 10, 9), ten = Day(2026, 4, 10, 10);
    const std::tuple<bool, DateTime, Span> cases[] = {
        {true, Day(2026, 4, 10, 9, 30), {Day(2026, 4, 10, 9, 30), ten}},
        {true, Day(2026, 4, 10, 10), {ten, Day(2026, 4, 10, 11)}},
        {true, Day(2026, 4, 10, 23), {Day(2026, 4, 10, 23), Day(2026, 4, 10, 23, 50)}},
        {true, Day(2026, 4, 12, 23, 30), {Day(2026, 4, 12, 23, 30), Day(2026, 4, 13, 0, 30)}},
        {false, Day(2026, 4, 10, 8), {nine, ten}},
        {false, Day(2026, 4, 9, 18), {nine, ten}},
        {false, Day(2026, 4, 11, 8), {nine, Day(2026, 4, 11, 8)}},
        {false, DateTime::Invalid(), {nine, ten}}};
    for (const auto& [isStart, changed, expected] : cases) {
        EventEditor editor = Timed();
        isStart ? editor.ChangeStart(changed) : editor.ChangeEnd(changed);
        EXPECT_EQ(SpanOf(editor), expected);
    }
}

TEST_F(Editors, ANewSeriesMovesWithTheStart) {
    EventEditor editor = Timed();  // a Friday
    editor.SetRecurring(true);
    editor.ChooseTab(kMonthly);
    editor.ChooseTab(kYearly);
    editor.ChooseTab(kWeekly);
    editor.TypePattern(kWeeklyN, "2");
    const auto says = [&] { return editor.Summary() + "|" + editor.Outcome(); };
    editor.ChangeStart(Day(2026, 4, 20, 9));
    EXPECT_EQ(says().find("Repeats every 2 weeks on MON from 04/20/26 to "), 0u) << says();
    editor.ChangeStart(Day(2026, 4, 20, 14, 30));
    EXPECT_EQ(editor.Event().RecurrenceStart, Day(2026, 4, 20, 14, 30));
    EXPECT_EQ(editor.Event().RecurrenceEnd.Midnight().PlusSeconds(14 * kHour + 30 * kMinute),
              editor.Event().RecurrenceEnd);
    editor.SetPattern(kWeeklySunday + 3, 1);
    editor.SetRecurrenceEnd(Day(2026, 12, 31));
    editor.ChangeStart(Day(2026, 4, 28, 14, 30));
    EXPECT_EQ(says(), "Repeats every 2 weeks on MON, WED from 04/28/26 to 12/31/26|Ends after 35 events, on 12/23/26")
        << "days that the user has chosen stay";
    editor.ChooseTab(kMonthly);
    EXPECT_EQ(editor.Summary(), "Repeats on day 28 of every month from 04/28/26 to 12/31/26");
    editor.ChooseForm(false);
    EXPECT_EQ(editor.Summary(), "Repeats on the 4th Tuesday of every month from 04/28/26 to 12/31/26");
    editor.SetRecurrenceStart(Day(2026, 6, 1));
    editor.ChangeStart(Day(2027, 1, 31, 14, 30));
    EXPECT_EQ(editor.Summary(), "Repeats on the last Sunday of every month from 06/01/26 to 12/31/26");
    editor.ChooseTab(kYearly);
    EXPECT_EQ(editor.Summary().find("Repeats on every January 31 from 06/01/26 to "), 0u);
}

TEST_F(Editors, AMemberThatMovesSaysThatItMovesAlone) {
    CTmEvent series = Series(kDaily, {1, 0, 1}, Day(2026, 4, 10, 9, 5), Day(2026, 4, 14, 9, 5));
    series.AllDay = 0;
    ASSERT_EQ(CreateEvent(world, series), EventSave::Saved);
    EventEditor editor = EventEditor::ForEvent(world, Stored()[1]);
    editor.PutReminder(*editor.NewReminder());
    EXPECT_EQ(editor.ReminderLines(), Texts{"POPUP:  04/11/26  9:05am"});
    const std::string before = editor.Summary();
    EXPECT_EQ(editor.Outcome(), "Ends after 5 events, on 04/14/26");
    const DateTime start = Day(2026, 4, 12, 10);
    editor.PlaceAt(start, start.PlusSeconds(SpanBetween(Stored()[1].Start, Stored()[1].End).seconds));
    EXPECT_EQ(editor.Outcome(), "Only this event moves, the others of its series stay where they are");
    EXPECT_EQ(editor.Summary(), before);
    EXPECT_EQ(editor.ReminderLines(), Texts{"POPUP:  04/12/26  10:00am"});
    editor.ChangeEnd(Day(2026, 4, 12, 12));
    EXPECT_EQ(editor.Outcome(), "Ends after 5 events, on 04/14/26");
}

TEST_F(Editors, KnowWhetherAnythingWouldBeLost) {
    EventEditor fresh = EventEditor::ForNewEvent(world, std::nullopt);
    EXPECT_FALSE(fresh.HasChanged());
    CTmEvent odd = Event("{A}", "", Day(2026, 4, 10, 9).PlusSeconds(17), Day(2026, 4, 10, 10));
    odd.BarColor = 99;
    odd.MonthlyPattern = {};
    const std::pair<const char*, void (*)(EventEditor&)> changes[] = {
        {"nothing", [](EventEditor&) {}},
        {"label", [](EventEditor& e) { e.SetLabel("Other"); }},
        {"description", [](EventEditor& e) { e.SetDescription("Other"); }},
        {"colour", [](EventEditor& e) { e.SetBarColor(3); }},
        {"start", [](EventEditor& e) { e.ChangeStart(Day(2026, 4, 9, 9)); }},
        {"both, with the same length", [](EventEditor& e) { e.PlaceAt(Day(2026, 4, 11, 9), Day(2026, 4, 11, 10)); }},
        {"all day", [](EventEditor& e) { e.SetAllDay(!e.IsAllDay()); }},
        {"series", [](EventEditor& e) { e.SetRecurring(true); }},
        {"reminder", [](EventEditor& e) { e.PutReminder(*e.NewReminder()); }}};
    for (const auto& [what, change] : changes) {
        EventEditor editor = EventEditor::ForEvent(world, odd);
        change(editor);
        EXPECT_EQ(editor.HasChanged(), what != changes[0].first) << what;
    }
    EventEditor back = EventEditor::ForEvent(world, odd);
    back.SetRecurring(true);
    back.SetRecurring(false);
    EXPECT_FALSE(back.HasChanged());
}

TEST_F(Editors, WholeDaysHaveTheirOwnTimes) {
    EventEditor editor = Timed();
    editor.SetAllDay(true);
    EXPECT_EQ(SpanOf(editor), Span(Day(2026, 4, 10), Day(2026, 4, 10, 23, 59, 59)));
    editor.ChangeStart(Day(2026, 4, 12, 7));
    EXPECT_EQ(SpanOf(editor), Span(Day(2026, 4, 12), Day(2026, 4, 12, 23, 59, 59)));
    editor.ChangeEnd(Day(2026, 4, 14));
    EXPECT_EQ(editor.Event().End, Day(2026, 4, 14, 23, 59, 59));
    editor.SetAllDay(false);
    EXPECT_EQ(editor.Event().End, Day(2026, 4, 14, 1));
    EventEditor late =
        EventEditor::ForEvent(world, Event("{L}", "", Day(2026, 4, 10, 23), Day(2026, 4, 10, 23, 59, 59)));
    late.SetAllDay(false);
    EXPECT_EQ(late.Event().End, Day(2026, 4, 10, 23, 50));
}

TEST_F(Editors, ASeriesTellsHowManyEventsItMakes) {
    EventEditor editor = EventEditor::ForNewEvent(world, std::pair(Day(2026, 1, 31), Day(2026, 1, 31)));
    const auto says = [&] { return editor.Summary() + "|" + editor.Outcome(); };
    EXPECT_EQ(says(), "|");
    editor.SetRecurring(true);
    EXPECT_EQ(says(), "Repeats every day from 01/31/26 to 02/01/26|Ends after 2 events, on 02/01/26");
    editor.SetRecurrenceEnd(Day(2399, 12, 31));
    EXPECT_EQ(says().find("Repeats every day from 01/31/26 to 12/31/99|Ends after 100000 events (a series can't have "
                          "more), on "),
              0u);
    editor.ChooseTab(kWeekly);
    editor.SetPattern(kWeeklySunday + 6, 0);
    EXPECT_EQ(says(), "|No event falls on these days");
    editor.ChooseTab(kMonthly);
    editor.SetRecurrenceEnd(Day(2026, 12, 31));
    EXPECT_EQ(says(), "Repeats on day 31 of every month from 01/31/26 to 12/31/26|Ends after 1 event, on 01/31/26");
    EXPECT_EQ(editor.TypePattern(kMonthlyDay, "4x5"), "45");
    EXPECT_EQ(says(), "Repeats on day 45 of every month from 01/31/26 to 12/31/26|No event falls on these days");
    EXPECT_EQ(editor.TypePattern(kMonthlyDayN, "0"), "1");
    EXPECT_EQ(editor.TypePattern(kMonthlyDayN, "1000"), "999");
    EXPECT_EQ(editor.Save(), EventSave::Refused);
    EXPECT_EQ(editor.TypePattern(kMonthlyDayN, ""), "");
    EXPECT_EQ(editor.Pattern(kMonthlyDayN), 1) << "an empty field counts as the least number";
    editor.ChooseForm(false);
    EXPECT_EQ(editor.Pattern(kMonthlyOnDay), 0);
    EXPECT_EQ(
        says(),
        "Repeats on the last Saturday of every month from 01/31/26 to 12/31/26|Ends after 12 events, on 12/26/26");
    EXPECT_EQ(editor.Save(), EventSave::Saved);
    const EventList events = Stored();
    ASSERT_EQ(events.size(), 12u);
    EXPECT_EQ(events[0].DailyPattern, UnsetPattern(kDailySlots)) << "the tab in front alone is kept";
    EXPECT_EQ(Span(events[11].Start, events[11].End), Span(Day(2026, 12, 26), Day(2026, 12, 26, 23, 59, 59)));
}

TEST_F(Editors, TheSeriesKeepsItsTimeOfDayAndItsRoom) {
    EventEditor editor = Timed();
    editor.SetRecurring(true);
    editor.ChooseTab(kWeekly);
    EXPECT_EQ(SeriesOf(editor), Span(Day(2026, 4, 10, 9), Day(2026, 4, 16, 9)));
    editor.TypePattern(kWeeklyN, "2");
    EXPECT_EQ(editor.Event().RecurrenceEnd, Day(2026, 4, 23, 9));
    editor.SetRecurrenceStart(Day(2026, 5, 1));
    EXPECT_EQ(SeriesOf(editor), Span(Day(2026, 5, 1, 9), Day(2026, 5, 1, 9)));
    editor.TypePattern(kWeeklyN, "");
    EXPECT_EQ(editor.Event().RecurrenceEnd, Day(2026, 5, 1, 9)) << "an empty field moves no end";
    editor.TypePattern(kWeeklyN, "1");
    EXPECT_EQ(editor.Event().RecurrenceEnd, Day(2026, 5, 7, 9));
    editor.SetRecurring(false);
    EXPECT_EQ(editor.Save(), EventSave::Saved);
    EXPECT_EQ(Stored()[0].WeeklyPattern, UnsetPattern(kWeeklySlots));
    EXPECT_EQ(Stored()[0].RecurrenceStart, Stored()[0].Start);
    EXPECT_EQ(Stored()[0].End, Day(2026, 4, 10, 10, 0, 59));
}

TEST_F(Editors, AnEventHasFourRemindersAtMostAndNoneOnceItHasBegun) {
    EventEditor editor = Timed();
    EXPECT_EQ(editor.ReminderLines(), Texts{"No Reminders Set"});
    for (int i = 0; i < 4; ++i) {
        std::optional<CTmReminder> reminder = editor.NewReminder();
        ASSERT_TRUE(reminder);
        EXPECT_EQ(reminder->SendTime, editor.Event().Start);
        reminder->SendTime = i == 0 ? Day(2026, 3, 14, 21, 5) : reminder->SendTime;
        reminder->PriorMinutes = i == 0 ? -1 : 0;
        editor.PutReminder(*reminder);
    }
    EXPECT_FALSE(editor.NewReminder());
    EXPECT_EQ(prompts.seen, Texts{"Only 4 Reminders: Only 4 Reminders Per Event"});
    EXPECT_EQ(editor.ReminderLines()[0], "POPUP:  Today  9:05pm");
    EXPECT_EQ(editor.ReminderLines()[1], "POPUP:  04/10/26  9:00am");
    editor.RemoveReminder(3);
    editor.PlaceAt(Day(2026, 3, 14, 9, 26, 53), Day(2026, 3, 14, 12));
    EXPECT_FALSE(editor.NewReminder());
    EXPECT_EQ(prompts.seen.back(), "Event Started: Event has already started or occurred.");
    EXPECT_TRUE(editor.HasChanged());
    EXPECT_EQ(editor.Save(), EventSave::Saved);
    EXPECT_EQ(StoredReminders()[0].EventStart, Day(2026, 3, 14, 9, 26)) << "of the event as it was saved";
    EventEditor again = EventEditor::ForEvent(world, Stored()[0]);
    again.SetLabel("Renamed");
    again.PlaceAt(Day(2026, 3, 14, 11), Day(2026, 3, 14, 12));
    EXPECT_EQ(again.Save(), EventSave::Saved);
    for (const CTmReminder& reminder : StoredReminders()) {
        EXPECT_EQ(reminder.EventLabel, "Renamed");
        EXPECT_EQ(reminder.EventStart, Day(2026, 3, 14, 11));
    }
    EXPECT_EQ(StoredReminders()[0].SendTime, Day(2026, 3, 14, 21, 5)) << "its own time";
}

TEST_F(Editors, AddressesAreValidatedByType) {
    world.setup.gateways[3] = "txt.example";
    world.setup.gateways[31] = "plus.example";
    world.setup.gateways[38] = "sun.example";
    const auto email = ReminderType::Email, text = ReminderType::TextMessage;
    // What is typed for a provider, and the address for the server, or the title of the refusal behind '!'.
    const std::tuple<ReminderType, const char*, int, const char*> cases[] = {
        {ReminderType::Popup, "", -1, ""},
        {email, "a@b.c", 0, "!Invalid Email"},
        {email, "ab@c.de", 0, "ab@c.de"},
        {email, "ab@cde.", 0, "!Invalid Email"},
        {email, "ab@cd.e", 0, "!Invalid Email"},
        {email, "@bcd.ef", 0, "!Invalid Email"},
        {email, "a.b@cde", 0, "!Invalid Email"},
        {email, "abcdefg", 0, "!Invalid Email"},
        {text, "123-555-4567", 3, "1235554567@txt.example"},
        {text, "123-555-4567", 4, "1235554567@txt.example"},
        {text, "1235554567", 31, "+481235554567@plus.example"},
        {text, "1235554567", 38, "11235554567@sun.example"},
        {text, "123555456", 3, "!Invalid Number"},
        {text, "123555456a", 3, "!Invalid Number"},
        {text, "1235554567", -1, "!Invalid Provider"},
        {text, "1235554567", 50, "!Invalid Provider"},
        {text, "1235554567", 5, "!No Gateway"}};
    for (const auto& [type, typed, provider, sendTo] : cases) {
        SCOPED_TRACE(typed);
        CTmReminder reminder;
        reminder.Type = static_cast<int32_t>(type);
        const AddressFault* const fault = ValidateAddress(reminder, typed, provider, world.setup);
        EXPECT_EQ(fault ? "!" + std::string(fault->title) : reminder.SendTo, sendTo);
        EXPECT_EQ(reminder.PhoneNumber, !fault && type == text ? typed : "");
    }
    EXPECT_STREQ(Providers()[49].name, "YCC");
}

TEST_F(Editors, TheReminderOffersTheOffsetsThatLieAhead) {
    for (const auto& [start, rows, last] : {std::tuple(Day(2026, 3, 14, 10, 26, 53), 0u, ""),
                                            {Day(2026, 3, 14, 10, 30), 2u, "0 Minutes"},
                                            {Day(2026, 3, 14, 12, 30), 9u, "2 Hours"},
                                            {Day(2026, 9, 1), 27u, "2 Weeks"}}) {
        CTmEvent event = Event("{E}", "", start, start);
        ReminderEditor editor(world, ReminderFor(event, ReminderType::Popup, 0), ReminderEditor::Purpose::Event, true);
        EXPECT_EQ(editor.PriorTimes().size(), rows);
        EXPECT_STREQ(rows > 0 ? editor.PriorTimes().back().text : "", last);
    }
}

TEST_F(Editors, TheReminderKeepsItsTimeWithinBounds) {
    const CTmEvent event = Event("{E}", "", Day(2026, 4, 10, 9), Day(2026, 4, 10, 10));
    ReminderEditor editor(world, ReminderFor(event, ReminderType::Popup, 0), ReminderEditor::Purpose::Event, true);
    EXPECT_EQ(editor.EarliestSendTime(), Day(2026, 3, 14, 10, 30));
    EXPECT_EQ(editor.ChosenPrior(), 1u);
    editor.ChoosePrior(7);
    EXPECT_EQ(editor.SendTimeText(), "Friday,  Apr. 10 2026  at  8:00AM");
    EXPECT_EQ(editor.EventStartText(), "04/10/26    9:00AM");
    editor.ChangeSendTime(Day(2026, 4, 9, 8, 7));
    EXPECT_EQ(editor.SendTime(), Day(2026, 4, 9, 8, 10));
    EXPECT_EQ(editor.ChosenPrior(), 0u);
    editor.ChangeSendTime(Day(2026, 3, 14, 10, 20));
    EXPECT_EQ(editor.SendTime(), Day(2026, 3, 14, 10, 30));
    editor.ChangeSendTime(Day(2060, 3, 14, 10, 20));
    EXPECT_EQ(editor.SendTime(), Day(2050, 1, 1, 10, 20));
    EXPECT_TRUE(editor.Save());
    EXPECT_EQ(editor.Reminder().PriorMinutes, -1);
    EXPECT_EQ(editor.Reminder().ServerId, -1);
}

TEST_F(Editors, AReminderThatIsAboutToComeIsLocked) {
    const CTmEvent event = Event("{E}", "", Day(2026, 3, 14, 9, 47, 53), Day(2026, 4, 10, 10));
    const CTmReminder soon = ReminderFor(event, ReminderType::Popup, 0);
    CTmReminder later = soon;
    later.SendTime = Day(2026, 3, 14, 9, 47, 54);
    using Purpose = ReminderEditor::Purpose;
    EXPECT_TRUE(ReminderEditor(world, soon, Purpose::Event, false).IsLocked());
    EXPECT_FALSE(ReminderEditor(world, soon, Purpose::Event, false).Save());
    EXPECT_FALSE(ReminderEditor(world, later, Purpose::Event, false).IsLocked());
    EXPECT_FALSE(ReminderEditor(world, soon, Purpose::Event, true).IsLocked());
}

TEST_F(Editors, TheTypeDecidesTextsLimitAndAddress) {
    settings.Set(Option::Email, std::string("last@example.com"));
    settings.Set(Option::Phone, std::string("111-222-3333"));
    settings.Set(Option::Service, 3);
    world.setup.gateways[3] = "txt.example";
    int stored = 0;
    world.storeSettings = [&] { ++stored; };
    const CTmEvent event = Event("{E}", "", Day(2026, 4, 10, 9), Day(2026, 4, 10, 10));
    ReminderEditor editor(world, ReminderFor(event, ReminderType::Email, 0), ReminderEditor::Purpose::Day, true);
    EXPECT_STREQ(editor.DayLabel(), "Selected Day:");
    EXPECT_TRUE(editor.PriorTimes().empty());
    EXPECT_EQ(editor.Address(), "last@example.com");
    const std::string longText = Repeated("\xC3\xA9", 200);
    editor.SetMessage(longText);
    EXPECT_EQ(editor.Message(), longText);
    editor.SetType(ReminderType::TextMessage);
    EXPECT_EQ(editor.Message(), longText.substr(0, 300)) << "150 characters";
    EXPECT_STREQ(editor.Labels().hint, "eg: 123-555-4567");
    editor.SetAddress("999-888-7777");
    editor.SendTestMessage();
    EXPECT_EQ(server.calls.back(), "send 9998887777@txt.example");
    server.works = 0;
    editor.SendTestMessage();
    EXPECT_EQ(prompts.seen.back(), "Message Failed: Message Failed.  Internet connection could not be established.");
    server.isSetUp = false;
    editor.SendTestMessage();
    EXPECT_EQ(prompts.seen.back().find("No Server Connection: No reminder server is set up, "), 0u);
    EXPECT_TRUE(editor.Save());
    EXPECT_EQ(settings.Text(Option::Phone), "999-888-7777");
    EXPECT_EQ(settings.Text(Option::Email), "last@example.com");
    EXPECT_EQ(stored, 1);
    editor.SetAddress("12");
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(prompts.seen.back(), "Invalid Number: Invalid Phone Number.  Number must be at least 10 digits.");
}

}  // namespace
}  // namespace lore
