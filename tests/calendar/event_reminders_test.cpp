#include "calendar/event_reminders.h"

#include "calendar/calendar_fixture.h"
#include "calendar/day_reminders.h"
#include "calendar/reminder_target.h"
#include "calendar/server_reminders.h"
#include "support/matchers.h"

namespace lore {
namespace {

using Texts = std::vector<std::string>;

constexpr char kNotAll[] =
    "Reminder Update Failed: A connection problem with the server occurred and not all reminders could be updated.\n\n"
    "Server may be busy, please check internet connection and try again later.\n\nPlease contact support if problem "
    "persists: help@example.com";

class EventReminders : public CalendarTest {
protected:
    EventReminders() : event(Event("{E}", "", Day(2026, 4, 1, 9), Day(2026, 4, 1, 10))) {}

    /// The event with a popup and two e-mails, all of them known to file and server.
    void Start() {
        for (const auto& [type, minutes] : {std::pair(ReminderType::Popup, 10), std::pair(ReminderType::Email, 20),
                                            std::pair(ReminderType::Email, 30)})
            event.Reminders.push_back(ReminderFor(event, type, minutes));
        CTmReminder ofDay = ReminderFor(event, ReminderType::Popup, 0);
        ofDay.EventId.clear();
        ASSERT_TRUE(SaveReminders(world, ReminderList{ofDay}));
        UpdateEventReminders(world, event, Report::Shown);
        ASSERT_EQ(StoredReminders().size(), 4u);
        server.calls.clear();
        prompts.seen.clear();
        TakeMessages();
    }
    void RemoveOwn(const CTmEvent& removed, Report report) {
        const LeavingReminders reminders = RemindersLeavingWith(removed, StoredReminders());
        EXPECT_TRUE(RemoveLeaving(world, reminders, report, [&] { return SaveReminders(world, reminders.staying); }));
    }
    ReminderList OfEvent() { return RemindersOfEvent(StoredReminders(), "{E}"); }

    CTmEvent event;
};

TEST_F(EventReminders, PopupsNeedNoServer) {
    server.isSetUp = false;
    event.Reminders = {ReminderFor(event, ReminderType::Popup, 10)};
    event.Reminders[0].ServerId = 5;
    UpdateEventReminders(world, event, Report::Shown);
    EXPECT_EQ(OfEvent()[0].ServerId, -1);
    EXPECT_EQ(TakeMessages(), Texts{"Updating the Reminders...."});
    EXPECT_TRUE(server.calls.empty() && prompts.seen.empty());
    UpdateEventReminders(world, event, Report::Shown);
    EXPECT_TRUE(TakeMessages().empty()) << "nothing to do";
}

TEST_F(EventReminders, AnUpdateReachesTheServerAndTheFile) {
    Start();
    EXPECT_EQ(OfEvent()[1].ServerId, 101);
    event.Reminders[1].Message = "New";
    event.Reminders.pop_back();
    UpdateEventReminders(world, event, Report::Shown);
    EXPECT_EQ(server.calls, (Texts{"test", "insert 101 Email 04/01/2026 07:40:00 a@example.com", "delete 102"}));
    EXPECT_EQ(server.messages.back(), "REMINDER: Wednesday, April 01 2026 at 8:40AM\n\nMESSAGE:\n\nNew");
    EXPECT_EQ(TakeMessages(), (Texts{"Updating the Reminders....", "Updating Reminders on the server...."}));
    EXPECT_EQ(OfEvent().size(), 2u);
    EXPECT_EQ(OfEvent()[1].ServerId, 103);
    EXPECT_TRUE(OfEvent()[1].ServerDone);
    EXPECT_EQ(StoredReminders().size(), 3u);
    for (const int32_t removed : {0, 1}) {
        event.Reminders[1].Type = static_cast<int32_t>(ReminderType::Popup);
        event.Reminders[1].ServerId = -1;
        server.results = {removed};
        UpdateEventReminders(world, event, Report::Shown);
        EXPECT_EQ(server.calls.back(), "delete 103") << "a popup isn't mailed";
        EXPECT_EQ(OfEvent()[1].ServerId, removed ? -1 : 103);
    }
}

TEST_F(EventReminders, WithoutAConnectionTheOldRemindersStay) {
    Start();
    const ReminderList before = OfEvent();
    server.works = 0;
    event.Reminders[0].Message = "Changed popup";
    event.Reminders.erase(event.Reminders.begin() + 1);
    event.Reminders.push_back(ReminderFor(event, ReminderType::Popup, 50));
    UpdateEventReminders(world, event, Report::Shown);
    EXPECT_FALSE(RemindersDiffer(before, OfEvent())) << "the popups take part";
    EXPECT_FALSE(RemindersDiffer(before, event.Reminders));
    EXPECT_THAT(prompts.seen, ElementsAre(StartsWith("No Server Connection? "), kNotAll));
}

TEST_F(EventReminders, AFailureUndoesWhatTheServerDidNotDo) {
    Start();
    event.Reminders[1].Message = "Not taken";
    event.Reminders.pop_back();
    event.Reminders.push_back(ReminderFor(event, ReminderType::Email, 40));
    event.Reminders.push_back(ReminderFor(event, ReminderType::Email, 50));
    server.results = {0, 7, -1, 0};  // the changed one, two new ones, the removed one
    UpdateEventReminders(world, event, Report::Shown);
    EXPECT_EQ(prompts.seen, Texts{kNotAll});
    const ReminderList reminders = OfEvent();
    ASSERT_EQ(reminders.size(), 4u);
    EXPECT_EQ(reminders[1].Message, "");
    EXPECT_EQ(reminders[2].ServerId, 7);
    EXPECT_EQ(reminders[3].PriorMinutes, 30) << "it goes back, the server still has it";
}

TEST_F(EventReminders, TheServerIsTestedTwiceAndThenAskedAbout) {
    struct Case {
        std::deque<int32_t> tests;
        std::deque<PromptAnswer> answers;
        Report report;
        ServerCheck check;
        bool asked;
        std::vector<int> waits;
    };
    const auto yes = PromptAnswer::Yes, no = PromptAnswer::No;
    const auto shown = Report::Shown, silent = Report::Silent;
    using enum ServerCheck;
    const Case cases[] = {{{1}, {}, shown, Answers, false, {}},
                          {{0, 1}, {}, shown, Answers, false, {800}},
                          {{0, 0}, {}, silent, NoAnswer, false, {800}},
                          {{0, 0}, {no}, shown, NoAnswer, true, {800}},
                          {{0, 0, 1}, {yes}, shown, Answers, true, {800}},
                          {{0, -1, 0, 1}, {yes}, shown, Answers, true, {800, 500}},
                          {{0, 0, 0, 0}, {yes}, shown, TriedInVain, true, {800, 500}}};
    for (const Case& one : cases) {
        server.tests = one.tests;
        prompts.answers = one.answers;
        prompts.seen.clear();
        waits.clear();
        EXPECT_EQ(CheckServer(world, one.report), one.check);
        EXPECT_TRUE(server.tests.empty());
        EXPECT_EQ(prompts.seen.size(), one.asked ? 1u : 0u);
        EXPECT_EQ(waits, one.waits);
    }
    server.isSetUp = false;
    prompts.seen.clear();
    EXPECT_EQ(CheckServer(world, Report::Silent), ServerCheck::NoAnswer);
    EXPECT_TRUE(prompts.seen.empty());
    EXPECT_EQ(CheckServer(world, Report::Shown), ServerCheck::NoAnswer);
    EXPECT_NE(prompts.seen[0].find("No reminder server is set up"), std::string::npos);
}

TEST(ServerReminders, TheServersClockDecidesAndNeverMidnight) {
    const DateTime now = Day(2026, 3, 14, 9, 26, 53);
    EXPECT_EQ(ServerSendTimeOf(Day(2026, 4, 1, 9), now, Day(2026, 3, 14, 12, 26)), Day(2026, 4, 1, 12));
    EXPECT_EQ(ServerSendTimeOf(Day(2026, 4, 1, 9), now, Day(2026, 3, 14, 0, 26)), Day(2026, 4, 1, 0, 0, 30));
    EXPECT_EQ(ServerSendTimeOf(Day(2026, 4, 1, 9), now, Day(2026, 3, 14, 0, 26, 20)), Day(2026, 4, 1, 0, 0, 20));
    EXPECT_FALSE(ServerSendTimeOf(Day(2026, 4, 1, 9), now, DateTime::Invalid()).IsValid());
    CTmReminder text;
    text.Type = static_cast<int32_t>(ReminderType::TextMessage);
    text.Message = "Bare";
    EXPECT_EQ(ServerMessage(text), "Bare");
}

TEST_F(EventReminders, RemovingTellsOnlyWithItsReport) {
    Start();
    const std::string bytes = BytesOf(world.reminderFile);
    for (const Report report : {Report::Silent, Report::Shown}) {
        PutBytes(world.reminderFile, bytes);
        prompts.seen.clear();
        server.works = 0;
        RemoveRemindersOfEvents(world, {event}, report);
        EXPECT_EQ(StoredReminders().size(), 1u) << "gone here all the same";
        EXPECT_EQ(prompts.seen.size(), report == Report::Shown ? 2u : 0u);
        PutBytes(world.reminderFile, bytes);
        prompts.seen.clear();
        server.tests = {1};
        RemoveOwn(Event("{E}", "", Day(2026, 4, 1), Day(2026, 4, 1)), report);
        EXPECT_EQ(StoredReminders().size(), 1u);
        EXPECT_EQ(prompts.seen, report == Report::Shown ? Texts{kNotAll} : Texts{});
    }
    EXPECT_EQ(server.calls.back(), "delete 102");
}

TEST_F(EventReminders, WhatIsTriedAgainInVainIsTold) {
    Start();
    server.works = 0;
    for (const bool removes : {true, false}) {
        prompts.seen.clear();
        prompts.answers = {PromptAnswer::Yes};
        if (removes)
            RemoveOwn(event, Report::Shown);
        else
            CreateSeriesReminders(world, event.Reminders);
        EXPECT_THAT(prompts.seen, ElementsAre(StartsWith("No Server Connection? "), kNotAll));
    }
}

TEST_F(EventReminders, RemindersOfADayGoToTheServerFirst) {
    CTmReminder popup = ReminderFor(event, ReminderType::Popup, 0), email = ReminderFor(event, ReminderType::Email, 0);
    popup.EventId.clear();
    email.EventId.clear();
    server.isSetUp = false;
    EXPECT_TRUE(SaveNewReminder(world, popup));
    EXPECT_EQ(TakeMessages(), (Texts{"Creating Reminder....", "Saving Reminder locally...."}));
    server.isSetUp = true;
    EXPECT_TRUE(SaveNewReminder(world, email));
    EXPECT_EQ(TakeMessages(),
              (Texts{"Creating Reminder....", "Creating Reminder on the server....", "Saving Reminder locally...."}));
    EXPECT_EQ(waits, (std::vector<int>{200, 150, 200}));
    EXPECT_EQ(agent.told.size(), 2u);

    CTmReminder stored = StoredReminders()[1];
    EXPECT_EQ(stored.ServerId, 101);
    stored.Message = "Other";
    server.results = {0, 0, 0};
    EXPECT_FALSE(SaveChangedReminder(world, stored));
    EXPECT_FALSE(SaveNewReminder(world, email));
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_FALSE(DeleteReminder(world, stored));
    EXPECT_EQ(StoredReminders().size(), 2u);
    EXPECT_EQ(StoredReminders()[1].Message, "");
    std::string told;
    for (const std::string& text : prompts.seen)
        told += text.substr(0, text.find(".\n")) + "|";
    const std::string failed =
        "Reminder Update Failed: A connection problem with the server occurred and the reminder ";
    EXPECT_EQ(told, failed + "could not be updated|" + failed + "could not be created|" +
                        "Delete Reminder?? Do you wish to delete this reminder?|" + failed + "could not be deleted|");

    EXPECT_TRUE(SaveChangedReminder(world, stored));
    EXPECT_EQ(StoredReminders()[1].Message, "Other");
    stored.Type = static_cast<int32_t>(ReminderType::Popup);
    stored.ServerId = -1;
    EXPECT_TRUE(SaveChangedReminder(world, stored));
    EXPECT_EQ(server.calls.back(), "delete 102") << "a popup is none of the server's";
    EXPECT_FALSE(DeleteReminder(world, stored)) << "the answer is no";
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
    EXPECT_TRUE(DeleteReminder(world, stored));
    EXPECT_TRUE(DeleteReminder(world, popup));
    EXPECT_TRUE(StoredReminders().empty());
}

TEST(DayReminders, BeginAtEightOrAnHourFromNow) {
    const DateTime other = Day(2026, 5, 1, 13), today = Day(2026, 3, 14);
    EXPECT_EQ(FirstSendTime(Day(2026, 3, 14, 9, 26, 53), &other), Day(2026, 5, 1, 8));
    EXPECT_EQ(FirstSendTime(Day(2026, 3, 14, 9, 26, 53), &today), Day(2026, 3, 14, 10, 30));
    EXPECT_EQ(FirstSendTime(Day(2026, 3, 14, 9, 30, 53), nullptr), Day(2026, 3, 14, 10, 30));
    EXPECT_EQ(FirstSendTime(Day(2026, 3, 14, 22, 51), nullptr), Day(2026, 3, 15));
}

TEST_F(EventReminders, LeadToTheirEventOrToTheirDay) {
    CTmReminder own = ReminderFor(event, ReminderType::Popup, 10), orphan = own, ofDay = own;
    orphan.ReminderId = "{O}";
    orphan.EventId = "{gone}";
    ofDay.ReminderId = "{D}";
    ofDay.EventId.clear();
    event.Reminders = {own, orphan, ofDay};
    Put({event});
    EXPECT_EQ(FindReminderTarget(world, own.ReminderId)->event->EventId, event.EventId);
    for (const char* const id : {"{O}", "{D}"}) {
        EXPECT_FALSE(FindReminderTarget(world, id)->event) << id;
        EXPECT_EQ(FindReminderTarget(world, id)->day, own.SendTime.Midnight()) << id;
    }
    EXPECT_FALSE(FindReminderTarget(world, "{X}"));
    EXPECT_FALSE(FindReminderTarget(world, ""));
}

TEST_F(EventReminders, AFileThatCannotBeReadIsNotWritten) {
    world.reminderFile = folder / ".";
    event.Reminders = {ReminderFor(event, ReminderType::Popup, 10)};
    UpdateEventReminders(world, event, Report::Shown);
    CreateSeriesReminders(world, event.Reminders);
    EXPECT_FALSE(SaveNewReminder(world, event.Reminders[0]));
    RemoveRemindersOfEvents(world, {event}, Report::Shown);
    EXPECT_EQ(faults.faults.size(), 4u);
    for (const Fault& fault : faults.faults)
        EXPECT_EQ(fault.what, "The reminders could not be read");
}

}  // namespace
}  // namespace lore
