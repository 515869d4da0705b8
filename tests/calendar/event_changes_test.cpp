#include "calendar/event_changes.h"

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "calendar/calendar_fixture.h"
#include "calendar/event_editor.h"
#include "calendar/event_reminders.h"
#include "calendar/series.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

using Texts = std::vector<std::string>;

/// The events that a test begins with.
constexpr char kAtFirst[] =
    "04/11 09:00 Alone\n"
    "04/10 09:05 Class\n04/11 09:05 Class\n04/12 09:05 Class\n04/13 09:05 Class\n04/14 09:05 Class\n";

/// Changes of events: a daily series of five days from 10 April 2026, with a popup an hour before each, and a single
/// event before it in the file.
class EventChanges : public CalendarTest {
protected:
    void SetUp() override {
        CTmEvent single = Event("{single}", "", Day(2026, 4, 11, 9), Day(2026, 4, 11, 10));
        single.Label = "Alone";
        Put({single});
        CTmEvent series = Series(kDaily, {1, 0, 1}, Day(2026, 4, 10, 9, 5), Day(2026, 4, 14, 9, 5));
        series.Label = "Class";
        series.Reminders = {ReminderFor(series, ReminderType::Popup, 60)};
        ASSERT_EQ(CreateEvent(world, series), EventSave::Saved);
        agent.told.clear();
        prompts.seen.clear();
        TakeMessages();
        waits.clear();
    }
    /// A member of the series as the file holds it.
    CTmEvent Member(size_t number) { return Stored()[1 + number]; }
    CTmEvent Find(const std::string& id) {
        const EventList events = Stored();
        const int index = FindEventIndex(events, id);
        return index < 0 ? CTmEvent() : events[static_cast<size_t>(index)];
    }
    /// Edits an event as this function changes it.
    template <typename Change>
    EventSave Edit(const CTmEvent& old, Change change) {
        CTmEvent changed = old;
        change(changed);
        return EditEvent(world, changed, old);
    }
    /// Nothing of the two files has changed since, and no reminder is without an event.
    void ExpectFiles(const std::string& events, const std::string& reminders) {
        EXPECT_EQ(BytesOf(world.eventFile), events);
        EXPECT_EQ(BytesOf(world.reminderFile), reminders);
    }
    /// Gives each event one more reminder, a mail at a time of its own that the server knows. All have what the events
    /// were once called.
    void GiveOldCopies() {
        ReminderList reminders = StoredReminders();
        for (const CTmEvent& event : Stored()) {
            reminders.push_back(ReminderFor(event, ReminderType::Email, 60));
            reminders.back().PriorMinutes = -1;
            reminders.back().ServerId = 7;
            reminders.back().ServerDone = true;
        }
        for (CTmReminder& reminder : reminders)
            reminder.EventLabel = reminder.EventDescription = "Once";
        ASSERT_TRUE(SaveReminders(world, reminders));
    }
    /// How many reminders say what their event says; the others say what was once.
    size_t CopiesThatFit() {
        size_t count = 0;
        for (const CTmEvent& event : Stored()) {
            for (const CTmReminder& reminder : event.Reminders) {
                const bool fits = reminder.EventLabel == event.Label && reminder.EventDescription == event.Description;
                count += fits ? 1 : 0;
                EXPECT_TRUE(fits || (reminder.EventLabel == "Once" && reminder.EventDescription == "Once"));
                EXPECT_TRUE(reminder.EventStart == event.Start || (reminder.PriorMinutes < 0 && IsSeriesMember(event)));
            }
        }
        return count;
    }
    void ExpectRemindersHaveEvents() {
        const EventList events = Stored();
        for (const CTmReminder& reminder : StoredReminders())
            EXPECT_GE(FindEventIndex(events, reminder.EventId), 0) << reminder.EventId;
    }
};

TEST_F(EventChanges, ANewSeriesStandsBehindTheOthersWithRemindersOfItsOwn) {
    const EventList events = Stored();
    EXPECT_EQ(Lines(events), kAtFirst);
    for (size_t i = 1; i < events.size(); ++i) {
        EXPECT_EQ(events[i].SeriesId, events[1].SeriesId);
        ASSERT_EQ(events[i].Reminders.size(), 1u);
        EXPECT_EQ(events[i].Reminders[0].SendTime, events[i].Start.PlusSeconds(-3600));
        EXPECT_EQ(events[i].Reminders[0].EventStart, events[i].Start);
    }
    EXPECT_EQ(StoredReminders().size(), 5u) << "none for the event that the series was made from";
}

TEST_F(EventChanges, CreatingTellsItsSteps) {
    CTmEvent series = Series(kDaily, {1, 0, 1}, Day(2026, 5, 1), Day(2026, 5, 2));
    series.Reminders = {ReminderFor(series, ReminderType::Email, 10)};
    EXPECT_EQ(CreateEvent(world, series), EventSave::Saved);
    EXPECT_EQ(TakeMessages(),
              (Texts{"Saving Event....", "Creating Reminders....", "Creating Reminders on the server....",
                     "Saving Reminders locally....", "Updating Events...", "Saving Events..."}));
    EXPECT_EQ(waits, (std::vector<int>{120, 150, 200}));
    EXPECT_EQ(agent.told, Texts{"TQRAGENTRELOADREMINDERS"});
    // The server's clock is an hour behind.
    EXPECT_EQ(server.calls, (Texts{"test", "insert -1 Email 05/01/2026 07:55:00 a@example.com",
                                   "insert -1 Email 05/02/2026 07:55:00 a@example.com"}));
    EXPECT_EQ(Stored().back().Reminders[0].ServerId, 102);
}

TEST_F(EventChanges, ASeriesWithoutADateIsRefusedAndTheOldEventStays) {
    const std::string events = BytesOf(world.eventFile), reminders = BytesOf(world.reminderFile);
    const auto toNoWeekday = [](CTmEvent& event) {
        event.Recurring = 1;
        event.RecurrenceType = kWeekly;
        event.WeeklyPattern = {1, 0, 0, 0, 0, 0, 0, 0};
    };
    EXPECT_EQ(Edit(Find("{single}"), toNoWeekday), EventSave::Refused);
    ASSERT_EQ(prompts.seen.size(), 1u);
    EXPECT_NE(prompts.seen[0].find("No Events in Series: No event falls on these days from"), std::string::npos);
    for (const SeriesReach reach : {SeriesReach::EntireSeries, SeriesReach::AllFollowing}) {
        question.answer = reach;
        const auto toThe31st = [](CTmEvent& event) {
            event.RecurrenceType = kMonthly;
            event.MonthlyPattern = {1, 0, 31, 1, -1, -1, -1};
            event.RecurrenceEnd = Day(2026, 4, 14);
        };
        EXPECT_EQ(Edit(Member(2), toThe31st), EventSave::Refused);
    }
    ExpectFiles(events, reminders);
    EXPECT_EQ(progress.messages.back(), "Applying changes to event series....");
}

TEST_F(EventChanges, ASeriesThatIsTooLongIsMadeAsFarAsItGoesAndSaysSo) {
    const DateTime first = Day(2030, 1, 1, 9);
    const CTmEvent series = Series(kDaily, {1, 0, 1}, first, first.PlusDays(kMostOccurrences));
    world.eventFile = folder / "none" / "Events.dat";
    EXPECT_EQ(CreateEvent(world, series), EventSave::NotWritten);
    EXPECT_TRUE(prompts.seen.empty()) << "none was made";
    world.eventFile = folder / "Events.dat";
    EXPECT_EQ(CreateEvent(world, series), EventSave::Saved);
    ASSERT_EQ(prompts.seen.size(), 1u);
    EXPECT_NE(prompts.seen[0].find("Series Too Long: A series can't have more than 100000 events.\n\n"
                                   "This one is made up to 10/17/2303;"),
              std::string::npos);
    EventList events;
    ASSERT_TRUE(LoadEvents(world, events));
    EXPECT_EQ(events.size(), kMostOccurrences + 6);
}

TEST_F(EventChanges, ASingleEventBecomesASeriesInItsPlaceAtTheEnd) {
    const auto toSecondDays = [](CTmEvent& event) {
        event.Recurring = 1;
        event.RecurrenceType = kDaily;
        event.DailyPattern = {1, 0, 2};
        event.RecurrenceStart = event.Start;
        event.RecurrenceEnd = Day(2026, 4, 14, 9);
    };
    EXPECT_EQ(Edit(Find("{single}"), toSecondDays), EventSave::Saved);
    const EventList events = Stored();
    EXPECT_EQ(Find("{single}").EventId, "");
    EXPECT_EQ(Lines(EventList(events.begin() + 5, events.end())), "04/11 09:00 Alone\n04/13 09:00 Alone\n");
    EXPECT_EQ(question.asked, 0);
}

TEST_F(EventChanges, AChangeOfScheduleReachesAsFarAsTheUserSays) {
    const std::tuple<SeriesReach, EventSave, const char*> cases[] = {
        {SeriesReach::EntireSeries, EventSave::Saved,
         "04/11 09:00 Alone\n04/10 09:05 Class\n04/12 09:05 Class\n04/14 09:05 Class\n"},
        {SeriesReach::AllFollowing, EventSave::Saved,
         "04/11 09:00 Alone\n04/10 09:05 Class\n04/11 09:05 Class\n04/12 09:05 Class\n04/14 09:05 Class\n"},
        {SeriesReach::OnlyThis, EventSave::Saved, kAtFirst},
        {SeriesReach::Cancel, EventSave::Cancelled, kAtFirst}};
    const std::string eventBytes = BytesOf(world.eventFile), reminderBytes = BytesOf(world.reminderFile);
    for (const auto& [reach, result, lines] : cases) {
        SCOPED_TRACE(static_cast<int>(reach));
        PutBytes(world.eventFile, eventBytes);
        PutBytes(world.reminderFile, reminderBytes);
        question.answer = reach;
        EXPECT_EQ(Edit(Member(2), [](CTmEvent& event) { event.DailyPattern.SetAt(2, 2); }), result);
        EXPECT_EQ(Lines(Stored()), lines);
        ExpectRemindersHaveEvents();
        EXPECT_EQ(StoredReminders().size(), Stored().size() - 1);
    }
    ExpectFiles(eventBytes, reminderBytes);
    EXPECT_EQ(question.asked, 4);
}

TEST_F(EventChanges, AFollowingPartIsASeriesOfItsOwnAndTheRestEndsBeforeIt) {
    question.answer = SeriesReach::AllFollowing;
    CTmEvent changed = Member(2);
    const CTmEvent old = changed;
    changed.Start = Day(2026, 4, 11, 9, 5);  // a day earlier: the member of that day goes too, with its reminder
    changed.End = Day(2026, 4, 11, 11, 0, 59);
    EXPECT_EQ(EditEvent(world, changed, old), EventSave::Saved);
    const EventList events = Stored();
    EXPECT_EQ(Lines(events),
              "04/11 09:00 Alone\n04/10 09:05 Class\n04/11 09:05 Class\n04/12 09:05 Class\n"
              "04/13 09:05 Class\n04/14 09:05 Class\n");
    EXPECT_EQ(events[1].RecurrenceEnd, Day(2026, 4, 10));
    EXPECT_NE(events[1].SeriesId, events[2].SeriesId);
    EXPECT_EQ(events[2].RecurrenceStart, changed.Start);
    EXPECT_EQ(events[2].SeriesId, events[5].SeriesId);
    EXPECT_EQ(StoredReminders().size(), 5u);
    ExpectRemindersHaveEvents();
    EXPECT_EQ(TakeMessages(), (Texts{"Saving Event....", "Saving Event....", "Applying changes to event series....",
                                     "Creating Reminders....", "Saving Reminders locally....", "Updating Events...",
                                     "Saving Events..."}));
}

TEST_F(EventChanges, AChangeOfInformationWalksOverTheSeries) {
    CTmEvent drifted = Member(3);
    drifted.Description = "Own words";
    drifted.BarColor = 7;
    ASSERT_TRUE(MergeEvents(world, {drifted}));
    TakeMessages();
    question.answer = SeriesReach::AllFollowing;
    EXPECT_EQ(Edit(Member(2), [](CTmEvent& event) { event.Label = "Lecture", event.BarColor = 9; }), EventSave::Saved);
    EXPECT_EQ(Lines(Stored()),
              "04/11 09:00 Alone\n04/10 09:05 Class\n04/11 09:05 Class\n04/12 09:05 Lecture\n"
              "04/13 09:05 Lecture\n04/14 09:05 Lecture\n");
    EXPECT_EQ(Member(3).Description, "Own words");
    EXPECT_EQ(Member(3).BarColor, 9);
    EXPECT_EQ(TakeMessages(), (Texts{"Saving Event....", "Saving Event....", "Applying changes to event series....",
                                     "Loading Reminders....", "Updating Event 1 of 3...", "Updating Event 2 of 3...",
                                     "Updating Event 3 of 3...", "Finalizing Event changes...",
                                     "Finalizing changes to event series...."}));
    EXPECT_EQ(waits, (std::vector<int>{120, 120, 150, 300}));
    question.answer = SeriesReach::EntireSeries;
    EXPECT_EQ(Edit(Member(4), [](CTmEvent& event) { event.Description = "All"; }), EventSave::Saved);
    for (size_t i = 0; i < 5; ++i)
        EXPECT_EQ(Member(i).Description, "All");
    EXPECT_EQ(Member(0).Label, "Class");
}

TEST_F(EventChanges, RemindersSayWhatTheirEventSaysWithoutTheServer) {
    GiveOldCopies();
    const auto unseen = [this] {
        ReminderList reminders = StoredReminders();
        for (CTmReminder& reminder : reminders)
            reminder.EventLabel.clear(), reminder.EventDescription.clear(), reminder.EventStart = DateTime();
        return reminders;
    };
    const auto move = [](CTmEvent& event) {
        event.Label = "New";
        event.Start = event.Start.PlusSeconds(1800);
        event.End = event.End.PlusSeconds(1800);
        std::erase_if(event.Reminders, [](const CTmReminder& r) { return r.PriorMinutes >= 0; });
    };
    const auto rename = [](CTmEvent& event) { event.Label = "New", event.Description = "Text"; };
    const std::string events = BytesOf(world.eventFile), reminders = BytesOf(world.reminderFile);
    const ReminderList before = unseen();
    for (const auto& [reach, reached] : {std::pair(SeriesReach::OnlyThis, 1u), std::pair(SeriesReach::AllFollowing, 3u),
                                         std::pair(SeriesReach::EntireSeries, 5u)}) {
        SCOPED_TRACE(reached);
        PutBytes(world.eventFile, events);
        PutBytes(world.reminderFile, reminders);
        question.answer = reach;
        EXPECT_EQ(Edit(Member(2), rename), EventSave::Saved);
        EXPECT_EQ(CopiesThatFit(), 2 * reached);
        const ReminderList after = unseen();
        ASSERT_EQ(after.size(), before.size());
        for (size_t i = 0; i < after.size(); ++i)
            EXPECT_FALSE(ReminderDiffers(after[i], before[i])) << "in their order";
        for (const std::string& call : server.calls)
            EXPECT_EQ(call, "test");
        const auto past = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
        std::filesystem::last_write_time(world.reminderFile, past);
        EXPECT_EQ(Edit(Member(2), [](CTmEvent&) {}), EventSave::Saved);
        EXPECT_EQ(std::filesystem::last_write_time(world.reminderFile), past) << "nothing is written for nothing";
    }
    PutBytes(world.reminderFile, reminders);
    EXPECT_EQ(Edit(Find("{single}"), [](CTmEvent&) {}), EventSave::Saved);
    EXPECT_EQ(CopiesThatFit(), 1u) << "a save without a change helps what was left behind";
    server.works = 0;
    EXPECT_EQ(Edit(Find("{single}"), move), EventSave::Saved);
    EXPECT_EQ(CopiesThatFit(), 1u);
    EXPECT_EQ(Find("{single}").Reminders[0].SendTime, Day(2026, 4, 11, 8)) << "it has a time of its own";
}

TEST_F(EventChanges, OwnTimesOfRemindersStayWhenTheirSeriesGetsAnotherOneAfterAMemberHasMovedAlone) {
    GiveOldCopies();
    const auto own = [this] {
        std::vector<std::tuple<std::string, std::string, int64_t>> reminders;
        for (const CTmReminder& reminder : StoredReminders()) {
            if (reminder.PriorMinutes < 0)
                reminders.emplace_back(reminder.EventId, reminder.ReminderId, reminder.SendTime.Seconds());
        }
        std::sort(reminders.begin(), reminders.end());
        return reminders;
    };
    const auto before = own();
    question.answer = SeriesReach::OnlyThis;
    const auto move = [](CTmEvent& event) {
        event.Start = event.Start.PlusSeconds(-7200);
        event.End = event.End.PlusSeconds(-7200);
        event.Label = "Early";
    };
    EXPECT_EQ(Edit(Member(1), move), EventSave::Saved);
    EXPECT_EQ(CopiesThatFit(), 2u);
    question.answer = SeriesReach::EntireSeries;
    for (const size_t member : {1u, 0u}) {
        const auto remind = [&](CTmEvent& event) {
            event.Reminders.push_back(ReminderFor(event, ReminderType::Popup, 5 + static_cast<int>(member)));
        };
        EXPECT_EQ(Edit(Member(member), remind), EventSave::Saved);
        EXPECT_EQ(own(), before) << member;
    }
    EXPECT_EQ(CopiesThatFit(), 20u);
}

TEST_F(EventChanges, ASeriesMadeAnewGivesItsRemindersItsTexts) {
    GiveOldCopies();
    question.answer = SeriesReach::EntireSeries;
    const auto change = [](CTmEvent& event) {
        event.DailyPattern = {1, 0, 2};
        event.Label = "New";
    };
    EXPECT_EQ(Edit(Member(2), change), EventSave::Saved);
    EXPECT_EQ(CopiesThatFit(), 6u) << "three events, two each";
}

TEST_F(EventChanges, CopiesGoBackWithAnEventThatCannotBeWritten) {
    GiveOldCopies();
    const std::string reminders = BytesOf(world.reminderFile);
    const CTmEvent old = Member(2);
    world.eventFile = folder / "none" / "Events.dat";
    const std::tuple<SeriesReach, const char*, int> cases[] = {{SeriesReach::OnlyThis, "Class", 0},
                                                               {SeriesReach::OnlyThis, "New", 0},
                                                               {SeriesReach::OnlyThis, "New", 60},
                                                               {SeriesReach::AllFollowing, "New", 60}};
    for (const auto& [reach, label, minutes] : cases) {
        SCOPED_TRACE(minutes);
        CTmEvent saved = old;
        saved.Label = label;
        saved.Start = saved.Start.PlusSeconds(60 * minutes);
        saved.End = saved.End.PlusSeconds(60 * minutes);
        question.answer = reach;
        server.calls.clear();
        PutBytes(world.reminderFile, reminders);
        EXPECT_EQ(EditEvent(world, saved, old), EventSave::NotWritten);
        const bool follows = reach == SeriesReach::OnlyThis && minutes > 0;  // a reminder before the start
        EXPECT_EQ(BytesOf(world.reminderFile) == reminders, !follows);
        EXPECT_EQ(Each(StoredReminders(), &CTmReminder::EventLabel), Texts(11, "Once"));
        EXPECT_EQ(std::ranges::count_if(server.calls, [](const std::string& call) { return call != "test"; }),
                  follows ? 2 : 0)
            << "it goes to the server and back as ever";
    }
}

TEST_F(EventChanges, WhatADamagedFileHoldsIsKeptBesideOnce) {
    const std::filesystem::path files[] = {world.eventFile, world.reminderFile};
    std::vector<std::string> damaged;
    for (const std::filesystem::path& file : files) {
        damaged.push_back(BytesOf(file) + "more");
        PutBytes(file, damaged.back());
    }
    for (const int minutes : {10, 20})
        EXPECT_EQ(Edit(Find("{single}"),
                       [&](CTmEvent& event) {
                           event.Label = "Moved by " + std::to_string(minutes);
                           event.Reminders = {ReminderFor(event, ReminderType::Popup, minutes)};
                       }),
                  EventSave::Saved);
    for (size_t i = 0; i < std::size(files); ++i) {
        EXPECT_EQ(BytesOf(files[i].string() + ".kept"), damaged[i]);
        EXPECT_FALSE(std::filesystem::exists(files[i].string() + ".2.kept"));
    }
    EXPECT_THAT(Each(faults.faults, &Fault::what),
                UnorderedElementsAre("The list of events is damaged; what it held is kept in Events.dat.kept",
                                     "The list of reminders is damaged; what it held is kept in Rem.dat.kept"));
}

TEST_F(EventChanges, ADamagedFileThatCantBeKeptIsNotWritten) {
    EventList events;
    ReminderList reminders;
    for (const std::filesystem::path& file : {world.eventFile, world.reminderFile}) {
        const std::string damaged = BytesOf(file) + "more";
        PutBytes(file, damaged);
        ASSERT_TRUE(LoadEvents(world, events) && LoadReminders(world, reminders));
        std::filesystem::remove(file);
        std::filesystem::create_directories(file / "in the way");
        const bool isEvents = file == world.eventFile;
        const auto save = [&] { return isEvents ? SaveEvents(world, events) : SaveReminders(world, reminders); };
        EXPECT_FALSE(save());
        ASSERT_EQ(faults.faults.size(), 1u);
        EXPECT_EQ(faults.faults[0].what,
                  isEvents ? "The events could not be saved" : "The reminders could not be saved");
        std::filesystem::remove_all(file);
        PutBytes(file, damaged);
        EXPECT_TRUE(save() && save());
        EXPECT_EQ(BytesOf(file.string() + ".kept"), damaged);
        EXPECT_FALSE(std::filesystem::exists(file.string() + ".2.kept"));
        EXPECT_EQ(faults.faults.size(), 2u);
        faults.faults.clear();
    }
}

TEST_F(EventChanges, AWalkKeepsWhatAMemberOfTheSeriesHasMovedTo) {
    question.answer = SeriesReach::EntireSeries;
    const auto move = [](CTmEvent& event) {
        event.Start = event.Start.PlusSeconds(7200);
        event.End = event.End.PlusSeconds(7200);
        event.Label = "Late";
    };
    EXPECT_EQ(Edit(Member(1), move), EventSave::Saved);
    EXPECT_EQ(Lines(Stored()),
              "04/11 09:00 Alone\n04/10 09:05 Late\n04/11 11:05 Late\n04/12 09:05 Late\n"
              "04/13 09:05 Late\n04/14 09:05 Late\n");
    for (const size_t number : {0u, 1u, 2u}) {
        const CTmEvent member = Member(number);
        ASSERT_EQ(member.Reminders.size(), 1u);
        EXPECT_EQ(member.Reminders[0].EventStart, member.Start);
        EXPECT_EQ(member.Reminders[0].SendTime, member.Start.PlusSeconds(-3600)) << "the reminder follows what moved";
    }
}

TEST_F(EventChanges, RemindersOfASeriesChangeWhereTheyAreTheSame) {
    question.answer = SeriesReach::EntireSeries;
    const std::string kept = Member(0).Reminders[0].ReminderId;
    const auto addTwo = [this](CTmEvent& event) {
        event.Reminders.push_back(ReminderFor(event, ReminderType::Email, 1440));
        event.Reminders.push_back(ReminderFor(event, ReminderType::Popup, 0));
    };
    server.results = {7, 0, 8, 9, 10};
    EXPECT_EQ(Edit(Member(1), addTwo), EventSave::Saved);
    EXPECT_EQ(Member(0).Reminders.size(), 3u);
    EXPECT_EQ(Member(0).Reminders[0].ReminderId, kept);
    EXPECT_EQ(Member(0).Reminders[1].ServerId, 7);
    EXPECT_EQ(Member(0).Reminders[1].SendTime, Day(2026, 4, 9, 9, 5));
    EXPECT_EQ(Member(1).Reminders.size(), 2u) << "the server failed for this one";
    EXPECT_EQ(prompts.seen,
              Texts{"Reminder Update Failed: A connection problem with the server occurred and not all Emails or "
                    "TextMgs could be updated.\n\nServer may be busy, please check internet connection and try again "
                    "later.\n\nPlease contact support if problem persists: help@example.com"});
    const Texts messages = TakeMessages();
    EXPECT_EQ(Texts(messages.begin() + 3, messages.begin() + 8),
              (Texts{"Loading Reminders....", "Checking Internet Connection...", "Updating Event 1 of 5...",
                     "Updating Event 1 of 5..local update", "Updating Event 1 of 5..contacting server"}));
    // Without a server, e-mails aren't made, and those that go are gone here.
    prompts.seen.clear();
    server.works = 0;
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_EQ(Edit(Member(4), [](CTmEvent& event) { event.Label = "New"; }), EventSave::Saved);
    EXPECT_EQ(prompts.seen.size(), 1u) << "tried again in vain, and nothing was to be done";
    prompts.seen.clear();
    EXPECT_EQ(Edit(Member(4), [](CTmEvent& event) { event.Reminders.erase(event.Reminders.begin() + 1); }),
              EventSave::Saved);
    EXPECT_EQ(StoredReminders().size(), 10u);
    EXPECT_FALSE(HasServerReminder(StoredReminders()));
    EXPECT_EQ(prompts.seen.size(), 1u) << "the question alone";
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_EQ(Edit(Member(4), addTwo), EventSave::Saved);
    EXPECT_THAT(prompts.seen.back(), HasSubstr("not all Emails or TextMgs could be updated")) << "tried again in vain";
}

TEST_F(EventChanges, AChangeOfTheStartAloneMovesOneEventAndItsReminders) {
    const auto move = [](CTmEvent& event) {
        event.Start = event.Start.PlusSeconds(3600);
        event.End = event.End.PlusSeconds(3600);
    };
    EXPECT_EQ(Edit(Member(1), move), EventSave::Saved);
    EXPECT_EQ(question.asked, 0);
    EXPECT_EQ(Member(1).Start, Day(2026, 4, 11, 10, 5));
    EXPECT_EQ(Member(1).Reminders[0].SendTime, Day(2026, 4, 11, 9, 5));
    EXPECT_EQ(Member(0).Start, Day(2026, 4, 10, 9, 5));
    EXPECT_EQ(TakeMessages(),
              (Texts{"Saving Event....", "Updating the Reminders....", "Updating Events...", "Saving Events..."}));
}

TEST_F(EventChanges, AMemberLeavesItsSeries) {
    const CTmEvent old = Member(1);
    EXPECT_EQ(Edit(old, [](CTmEvent& event) { ResetRecurrence(event, kNoSeries); }), EventSave::Saved);
    EXPECT_FALSE(IsSeriesMember(Member(1)));
    EXPECT_EQ(SelectSeries(Stored(), old.SeriesId).size(), 4u);
}

TEST_F(EventChanges, WhatCannotBeWrittenChangesNothing) {
    question.answer = SeriesReach::EntireSeries;
    const std::string eventBytes = BytesOf(world.eventFile);
    const ReminderList reminders = StoredReminders();
    CTmEvent schedule = Member(2), texts = schedule, alone = Find("{single}");
    const CTmEvent old = schedule, oldAlone = alone;
    schedule.DailyPattern = {1, 0, 2};
    texts.Label = "New";
    texts.Reminders.clear();
    alone.Label = "New";
    alone.Reminders = {ReminderFor(alone, ReminderType::Popup, 10)};
    std::filesystem::create_directory(folder / "folder");
    // One that can't be read, and one that reads as empty and can't be written.
    for (const std::filesystem::path& path : {folder / "folder", folder / "none" / "Events.dat"}) {
        faults.faults.clear();
        world.eventFile = path;
        EXPECT_EQ(EditEvent(world, schedule, old), EventSave::NotWritten);
        EXPECT_EQ(EditEvent(world, texts, old), EventSave::NotWritten);
        EXPECT_EQ(EditEvent(world, alone, oldAlone), EventSave::NotWritten);
        EXPECT_EQ(CreateEvent(world, schedule), EventSave::NotWritten);
        prompts.answers.assign(2, PromptAnswer::Yes);
        EXPECT_FALSE(DeleteEvent(world, alone));
        EXPECT_FALSE(DeleteEntireSeries(world, old));
        EXPECT_EQ(faults.faults.size(), 6u);
        world.eventFile = folder / "Events.dat";
        EXPECT_EQ(BytesOf(world.eventFile), eventBytes);
        EXPECT_FALSE(RemindersDiffer(StoredReminders(), reminders)) << path;
    }
}

TEST_F(EventChanges, DeletingAsksThenRemovesWithReminders) {
    using Remove = bool (*)(const CalendarWorld&, const CTmEvent&);
    const std::tuple<Remove, const char*, const char*, size_t, size_t> cases[] = {
        {DeleteSingleEvent, "Delete Event?? Do you wish to delete this event?", "Deleting single event....", 5, 4},
        {DeleteFollowingEvents,
         "Deleting Events in Series?? Do you wish to delete this and all following events in the recurring series that "
         "this event belongs?",
         "Deleting this and all following events in series....", 3, 2},
        {DeleteEntireSeries,
         "Delete Entire Series?? Do you wish to delete the entire recurring series that this event belongs?",
         "Deleting entire to event series....", 1, 0}};
    const std::string eventBytes = BytesOf(world.eventFile), reminderBytes = BytesOf(world.reminderFile);
    for (const auto& [remove, says, tells, left, reminders] : cases) {
        SCOPED_TRACE(tells);
        PutBytes(world.eventFile, eventBytes);
        PutBytes(world.reminderFile, reminderBytes);
        prompts.answers = {PromptAnswer::No, PromptAnswer::Yes};
        const CTmEvent member = Member(2);
        EXPECT_FALSE(remove(world, member));
        ExpectFiles(eventBytes, reminderBytes);
        // Reminders that can't be read keep the events.
        world.reminderFile = folder.Path();
        prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        EXPECT_FALSE(remove(world, member));
        world.reminderFile = folder / "Rem.dat";
        ExpectFiles(eventBytes, reminderBytes);
        TakeMessages();
        EXPECT_TRUE(remove(world, member));
        EXPECT_EQ(prompts.seen.back(), says);
        EXPECT_EQ(TakeMessages(), (Texts{tells, "Updating Event's Reminders...."}));
        EXPECT_EQ(Stored().size(), left);
        EXPECT_EQ(StoredReminders().size(), reminders);
        ExpectRemindersHaveEvents();
    }
}

TEST_F(EventChanges, TheRestOfACutSeriesEndsOnTheDayBefore) {
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_TRUE(DeleteFollowingEvents(world, Member(2)));
    EXPECT_EQ(Member(0).RecurrenceEnd, Day(2026, 4, 11));
    EXPECT_EQ(Member(1).RecurrenceEnd, Day(2026, 4, 11));
    question.answer = SeriesReach::EntireSeries;
    EventEditor editor = EventEditor::ForEvent(world, Member(0));
    EXPECT_EQ(editor.Outcome(), "Ends after 2 events, on 04/11/26");
    editor.PlaceAt(Day(2026, 4, 10, 9, 5), Day(2026, 4, 10, 11));
    EXPECT_EQ(editor.Save(), EventSave::Saved);
    ASSERT_EQ(Stored().size(), 3u) << "another length makes the series anew, and its last day stays";
    EXPECT_EQ(Member(1).Start.Midnight(), Day(2026, 4, 11));
    const auto toTheAfternoon = [](CTmEvent& event) {
        event.Start = Day(2026, 4, 10, 10, 30), event.End = Day(2026, 4, 10, 12);
    };
    question.answer = SeriesReach::AllFollowing;
    EXPECT_EQ(Edit(Member(0), toTheAfternoon), EventSave::Saved);
    EXPECT_EQ(Stored().size(), 3u) << "at a later hour too";
    ExpectRemindersHaveEvents();
}

TEST_F(EventChanges, ASingleEventGoesWithItsReminders) {
    const auto addMail = [this](CTmEvent& event) { event.Reminders = {ReminderFor(event, ReminderType::Email, 30)}; };
    ASSERT_EQ(Edit(Find("{single}"), addMail), EventSave::Saved);
    server.calls.clear();
    TakeMessages();
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_TRUE(DeleteEvent(world, Find("{single}")));
    EXPECT_EQ(server.calls, (Texts{"test", "delete 101"}));
    EXPECT_EQ(TakeMessages(), (Texts{"Deleting Event....", "Updating Event's Reminders...."}));
    EXPECT_EQ(StoredReminders().size(), 5u);
}

TEST_F(EventChanges, ANewEventCoversTheChosenDays) {
    const CTmEvent today = EventForDays(world, std::nullopt);
    EXPECT_EQ(std::pair(today.Start, today.End), std::pair(Day(2026, 3, 14), Day(2026, 3, 14, 23, 59, 59)));
    const CTmEvent days = EventForDays(world, std::pair(Day(2026, 5, 1, 12), Day(2026, 5, 3)));
    EXPECT_EQ(std::pair(days.Start, days.End), std::pair(Day(2026, 5, 1), Day(2026, 5, 3, 23, 59, 59)));
    EXPECT_EQ(days.RecurrenceEnd, days.Start);
    EXPECT_EQ(days.AllDay, 1);
}

}  // namespace
}  // namespace lore
