#include <ctime>
#include <map>
#include <random>

#include "calendar/event_builder.h"
#include "calendar/popup_agent.h"
#include "calendar/reminder_file.h"
#include "ports/agent.h"
#include "support/each.h"
#include "support/matchers.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"
#include "support/set_variable.h"

namespace lore {
namespace {

const DateTime kNow = Day(2026, 3, 14, 9, 26, 53);

CTmReminder PopupAt(const std::string& id, const DateTime& time, ReminderType type = ReminderType::Popup) {
    CTmReminder reminder;
    reminder.ReminderId = id;
    reminder.Type = static_cast<int32_t>(type);
    reminder.SendTime = time;
    reminder.EventStart = time.PlusSeconds(600);
    reminder.EventId = "{E}";
    reminder.EventLabel = id;
    return reminder;
}

/// The labels on the screen, those of late ones with a mark.
std::vector<std::string> Screen(const PopupSchedule& schedule) {
    return Each(schedule.OnScreen(),
                [](const Popup& popup) { return popup.reminder.EventLabel + (popup.isLate ? "!" : ""); });
}

TEST(PopupSchedule, ShowsEachPopupOnceAtItsTime) {
    PopupSchedule schedule;
    schedule.SetReminders(
        {PopupAt("later", kNow.PlusSeconds(61)), PopupAt("now", kNow), PopupAt("old", kNow.PlusDays(-400)),
         PopupAt("just late", kNow.PlusSeconds(-60)), PopupAt("not yet late", kNow.PlusSeconds(-59)),
         PopupAt("now", kNow), PopupAt("mail", kNow, ReminderType::Email),
         PopupAt("text", kNow, ReminderType::TextMessage), PopupAt("damaged", kNow, static_cast<ReminderType>(77)),
         PopupAt("never", DateTime()), PopupAt("invalid", DateTime::Invalid())},
        kNow);
    EXPECT_EQ(schedule.TakeDue(kNow), 5u);
    EXPECT_THAT(Screen(schedule), ElementsAre("old!", "just late!", "not yet late", "now", "now"));
    EXPECT_EQ(schedule.TakeDue(kNow.PlusSeconds(60)), 0u);
    EXPECT_EQ(schedule.NextTime(), kNow.PlusSeconds(61));
    EXPECT_EQ(schedule.TakeDue(kNow.PlusSeconds(61)), 1u);
    EXPECT_TRUE(schedule.NextTime().IsNull());
    schedule.Dismiss(KeyOf(PopupAt("old", kNow.PlusDays(-400))));

    PopupSchedule next;
    next.SetShown(schedule.Shown());
    next.SetReminders({PopupAt("now", kNow), PopupAt("old", kNow.PlusDays(-400)), PopupAt("missed", kNow)}, kNow);
    next.TakeDue(kNow.PlusDays(1));
    EXPECT_THAT(Screen(next), ElementsAre("now!", "missed!")) << "nobody has answered the one of before";
}

TEST(PopupSchedule, FollowsTheFileWithWhatIsOnTheScreen) {
    PopupSchedule schedule;
    schedule.SetReminders({PopupAt("a", kNow), PopupAt("b", kNow), PopupAt("c", kNow), PopupAt("d", kNow)}, kNow);
    schedule.TakeDue(kNow);
    schedule.Dismiss(KeyOf(PopupAt("d", kNow)));
    CTmReminder renamed = PopupAt("b", kNow);
    renamed.EventLabel = "b renamed";
    schedule.SetReminders({renamed, PopupAt("c", kNow.PlusSeconds(30)), PopupAt("d", kNow), PopupAt("a", kNow)}, kNow);
    EXPECT_THAT(Screen(schedule), ElementsAre("a", "b renamed")) << "c was moved, d was dismissed";
    schedule.TakeDue(kNow.PlusSeconds(30));
    EXPECT_THAT(Screen(schedule), ElementsAre("a", "b renamed", "c"));
    schedule.SetReminders({}, kNow);
    EXPECT_THAT(Screen(schedule), IsEmpty());
    schedule.SetReminders({renamed, PopupAt("c", kNow.PlusSeconds(30))}, kNow);
    EXPECT_EQ(schedule.TakeDue(kNow.PlusDays(1)), 2u) << "nobody has answered them";
    schedule.DismissAll();
    schedule.SetReminders({}, kNow);
    schedule.SetReminders({renamed, PopupAt("d", kNow)}, kNow);
    EXPECT_EQ(schedule.TakeDue(kNow.PlusDays(1)), 0u) << "a reminder that comes back was dismissed";
}

TEST(PopupSchedule, TellsPopupsOfOneIdAndMomentApart) {
    for (const char* const id : {"", "{R}"}) {
        SCOPED_TRACE(id);
        ReminderList reminders;
        const auto add = [&](const char* label) {
            reminders.push_back(PopupAt(id, kNow));
            reminders.back().EventLabel = label;
        };
        for (const char* const label : {"a", "b", "c"})
            add(label);
        PopupSchedule schedule;
        schedule.SetReminders(reminders, kNow);
        EXPECT_EQ(schedule.TakeDue(kNow), 3u);
        EXPECT_THAT(Screen(schedule), ElementsAre("a", "b", "c"));
        schedule.Dismiss(schedule.OnScreen()[1].Key());
        schedule.Snooze(schedule.OnScreen()[1].Key(), kNow.PlusSeconds(300));
        EXPECT_THAT(Screen(schedule), ElementsAre("a"));
        add("d");
        schedule.SetReminders(reminders, kNow);
        EXPECT_EQ(schedule.TakeDue(kNow), 1u);
        EXPECT_THAT(Screen(schedule), ElementsAre("a", "d"));
        const TempFolder folder(MemoryFolder());
        ShownPopups kept;
        ASSERT_TRUE(SaveShownPopups(folder / "shown", schedule.Shown()).Ok());
        ASSERT_TRUE(LoadShownPopups(folder / "shown", kept).Ok());
        EXPECT_EQ(kept, schedule.Shown());
        PopupSchedule next;
        next.SetShown(kept);
        next.SetReminders(reminders, kNow);
        EXPECT_EQ(next.TakeDue(kNow), 2u);
        EXPECT_EQ(next.TakeDue(kNow.PlusSeconds(300)), 1u);
        EXPECT_THAT(Screen(next), ElementsAre("a", "d", "c"));
    }
}

TEST(PopupSchedule, BringsASnoozedPopupBackEvenAfterARestart) {
    const ReminderList reminders = {PopupAt("a", kNow), PopupAt("b", kNow)};
    PopupSchedule schedule;
    schedule.SetReminders(reminders, kNow);
    schedule.TakeDue(kNow);
    schedule.Snooze(KeyOf(reminders[0]), kNow.PlusSeconds(300));
    schedule.Snooze(KeyOf(reminders[0]), kNow.PlusSeconds(900));  // no longer on the screen
    schedule.Snooze(KeyOf(PopupAt("x", kNow)), kNow.PlusSeconds(300));
    EXPECT_THAT(Screen(schedule), ElementsAre("b"));
    EXPECT_EQ(schedule.NextTime(), kNow.PlusSeconds(300));
    schedule.DismissAll();
    for (const auto& [late, shown] : {std::pair(0, "a"), std::pair(3600, "a!")}) {
        PopupSchedule next;
        next.SetShown(schedule.Shown());
        next.SetReminders(reminders, kNow);
        EXPECT_EQ(next.TakeDue(kNow.PlusSeconds(299)), 0u);
        next.TakeDue(kNow.PlusSeconds(300 + late));
        EXPECT_THAT(Screen(next), ElementsAre(shown));
        next.DismissAll();
        EXPECT_EQ(next.TakeDue(kNow.PlusDays(9)), 0u);
    }
}

TEST(PopupSchedule, LooksAgainWithinAMinute) {
    const std::pair<int64_t, int64_t> cases[] = {{7200, 60}, {60, 60}, {59, 59}, {1, 1}, {0, 0}, {-5, 0}};
    for (const auto& [ahead, seconds] : cases) {
        PopupSchedule schedule;
        schedule.SetReminders({PopupAt("a", kNow.PlusSeconds(ahead))}, kNow);
        EXPECT_EQ(schedule.SecondsToNextLook(kNow), seconds) << ahead;
    }
    EXPECT_EQ(PopupSchedule().SecondsToNextLook(kNow), 60);
    PopupSchedule shown;  // its event starts ten minutes later
    shown.SetReminders({PopupAt("a", kNow)}, kNow);
    shown.TakeDue(kNow);
    for (const auto& [ahead, seconds] : {std::pair(0, 60), std::pair(595, 5), std::pair(600, 60), std::pair(601, 60)})
        EXPECT_EQ(shown.SecondsToNextLook(kNow.PlusSeconds(ahead)), seconds) << ahead;
}

TEST(PopupSchedule, ForgetsWhatIsGoneForAMonthAndNothingElse) {
    PopupSchedule schedule;
    schedule.SetShown({{{"gone", kNow.PlusDays(-31).Seconds()}, {}},
                       {{"just gone", kNow.PlusDays(-29).Seconds()}, {}},
                       {{"kept", kNow.PlusDays(-400).Seconds()}, {}},
                       {{"the clock was ahead", kNow.PlusDays(2).Seconds()}, {}}});
    schedule.SetReminders({PopupAt("kept", kNow.PlusDays(-400)), PopupAt("the clock was ahead", kNow.PlusDays(2))},
                          kNow);
    EXPECT_EQ(schedule.TakeDue(kNow), 0u);
    EXPECT_EQ(schedule.NextTime(), kNow.PlusDays(2)) << "it comes at its time";
    EXPECT_THAT(Each(schedule.Shown(), [](const auto& shown) { return shown.first.reminderId; }),
                ElementsAre("just gone", "kept"));
}

TEST(PopupSchedule, OffersTheStartOfAnEventThatLiesAhead) {
    CTmReminder reminder = PopupAt("a", kNow);
    EXPECT_EQ(SnoozeChoices(reminder, kNow).back().until, reminder.EventStart);
    const size_t all = SnoozeChoices(reminder, kNow).size();
    EXPECT_EQ(SnoozeChoices(reminder, reminder.EventStart).size(), all - 1);
    reminder.EventId.clear();
    EXPECT_EQ(SnoozeChoices(reminder, kNow).size(), all - 1);
}

TEST(PopupSchedule, SaysWhatItIsAboutAndWhen) {
    Popup popup{PopupAt("Class", kNow), kNow, false};
    popup.reminder.Message = "Bring the map";
    EXPECT_EQ(TextOf(popup, kNow).time, "Starts Saturday, March 14 2026 at 9:36AM");
    EXPECT_EQ(TextOf(popup, kNow.PlusSeconds(600)).time, "Started Saturday, March 14 2026 at 9:36AM");
    EXPECT_EQ(TextOf(popup, kNow).late, "");
    popup.isLate = true;
    EXPECT_EQ(TextOf(popup, kNow).late, "Missed on Saturday, March 14 2026 at 9:26AM");
    popup.reminder.EventId.clear();
    popup.reminder.EventLabel.clear();
    EXPECT_EQ(TextOf(popup, kNow).label, "Reminder");
    EXPECT_EQ(TextOf(popup, kNow).time, "");
    popup.isLate = false;
    EXPECT_EQ(TextOf(popup, kNow).time, "Saturday, March 14 2026 at 9:26AM");
}

/// A year of clocks that run and jump, of edits, snoozes and restarts, against a list that is walked each time.
TEST(PopupSchedule, ShowsNothingTwiceAndForgetsNothing) {
    std::mt19937 random(7);
    const auto upTo = [&](int most) { return std::uniform_int_distribution(0, most)(random); };
    DateTime now = kNow;
    ReminderList reminders;
    std::map<PopupKey, DateTime> due;  // what is still to come, by the literal rule
    PopupSchedule schedule;
    schedule.SetReminders(reminders, now);
    for (int step = 0; step < 1500; ++step) {
        const int what = upTo(9);
        if (what <= 2) {
            const CTmReminder added = PopupAt("r" + std::to_string(step), now.PlusSeconds(upTo(7200) - 600));
            reminders.push_back(added);
            due[KeyOf(added)] = added.SendTime;
            schedule.SetReminders(reminders, now);
        } else if (what == 3 && !reminders.empty()) {
            CTmReminder& moved = reminders[static_cast<size_t>(upTo(static_cast<int>(reminders.size()) - 1))];
            due.erase(KeyOf(moved));
            moved.SendTime = now.PlusSeconds(step + 60);
            due[KeyOf(moved)] = moved.SendTime;
            schedule.SetReminders(reminders, now);
        } else if (what == 4 && !schedule.OnScreen().empty()) {
            const PopupKey key = schedule.OnScreen().front().Key();
            if (upTo(1) == 0)
                schedule.Snooze(key, due[key] = now.PlusSeconds(upTo(3600) + 1));
            else
                schedule.Dismiss(key);
        } else if (what == 5) {
            const ShownPopups shown = schedule.Shown();
            for (const Popup& unanswered : schedule.OnScreen())
                due[unanswered.Key()] = unanswered.due;
            schedule = PopupSchedule();
            schedule.SetShown(shown);
            schedule.SetReminders(reminders, now);
        } else {
            now = now.PlusSeconds(upTo(1200) - (what == 6 ? 900 : 0));
        }
        size_t expected = 0;
        for (auto entry = due.begin(); entry != due.end();) {
            const bool comes = entry->second.Seconds() <= now.Seconds();
            expected += comes;
            entry = comes ? due.erase(entry) : std::next(entry);
        }
        ASSERT_EQ(schedule.TakeDue(now), expected) << "step " << step;
    }
    EXPECT_GT(schedule.Shown().size(), 200u);
}

class ReminderAgent : public testing::Test {
protected:
    PopupAgent MakeAgent() {
        return {remPath,
                shownPath,
                clock,
                faults,
                {[this] { ++looks; }, [this] { ++checks; }, [this] { ++fronts; }, [this] { ++closes; }}};
    }
    void Put(const ReminderList& reminders) { ASSERT_TRUE(WriteReminders(remPath, reminders).Ok()); }
    std::vector<std::string> Shows() {
        PopupAgent agent = MakeAgent();
        agent.Start();
        std::vector<std::string> shown = Screen(agent.Schedule());
        agent.DismissAll();
        return shown;
    }

    TempFolder folder{MemoryFolder()};
    std::filesystem::path remPath = folder / "Rem.dat", shownPath = folder / "AgentShown.dat";
    FixedClock clock;
    NotedFaults faults;
    int looks = 0, checks = 0, fronts = 0, closes = 0;
};

TEST_F(ReminderAgent, ShowsOnceWhatWasMissedAndWritesNoReminder) {
    EXPECT_THAT(Shows(), IsEmpty()) << "without any file";
    Put({PopupAt("a", clock.now.PlusDays(-1)), PopupAt("b", clock.now), PopupAt("c", clock.now.PlusDays(1))});
    const std::string before = BytesOf(remPath);
    MakeAgent().Start();  // ends before anybody has answered
    EXPECT_THAT(Shows(), ElementsAre("a!", "b"));
    EXPECT_THAT(Shows(), IsEmpty());
    clock.now = clock.now.PlusDays(2);
    EXPECT_THAT(Shows(), ElementsAre("c!"));
    EXPECT_EQ(BytesOf(remPath), before);
    Put({PopupAt("", clock.now), PopupAt("", clock.now)});
    EXPECT_EQ(Shows().size(), 2u) << "records without an id";
    EXPECT_THAT(Shows(), IsEmpty());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(ReminderAgent, FollowsTheFileWhetherToldOrNot) {
    PopupAgent agent = MakeAgent();
    agent.Start();
    EXPECT_FALSE(agent.Look());
    Put({PopupAt("a", clock.now)});
    EXPECT_TRUE(agent.Look());
    EXPECT_EQ(agent.TakeNew(), 1u);
    EXPECT_EQ(agent.TakeNew(), 0u);
    EXPECT_FALSE(agent.Look());
    // Another file that looks like the one before is read when a message says so.
    const auto time = std::filesystem::last_write_time(remPath);
    Put({PopupAt("b", clock.now)});
    std::filesystem::last_write_time(remPath, time);
    EXPECT_FALSE(agent.Look());
    EXPECT_EQ(agent.Receive({InstanceMessage::kCommand, kAgentReloadReminders}), 1u);
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(agent.Look());
    EXPECT_THAT(Screen(agent.Schedule()), ElementsAre("b"));
    std::filesystem::remove(remPath);
    EXPECT_TRUE(agent.Look());
    EXPECT_THAT(Screen(agent.Schedule()), IsEmpty());
}

TEST_F(ReminderAgent, KeepsASnoozeOnTheDisk) {
    Put({PopupAt("a", clock.now)});
    PopupAgent agent = MakeAgent();
    agent.Start();
    agent.Snooze(agent.Schedule().OnScreen().front().Key(), {"", clock.now.PlusSeconds(600), true});
    EXPECT_THAT(Shows(), IsEmpty());
    clock.now = clock.now.PlusSeconds(601);
    EXPECT_THAT(Shows(), ElementsAre("a"));
    EXPECT_THAT(Shows(), IsEmpty());
}

/// The clock of the time zone.
struct ZoneClock : Clock {
    explicit ZoneClock(const DateTime& moment) : utc(moment.Seconds()) {}
    DateTime Now() const override {
        std::tm at = {};
        ::localtime_r(&utc, &at);
        return DateTime(at.tm_year + 1900, at.tm_mon + 1, at.tm_mday, at.tm_hour, at.tm_min, at.tm_sec);
    }
    DateTime NowUtc() const override { return DateTime::FromSeconds(utc); }
    std::time_t utc;
};

TEST_F(ReminderAgent, CountsASnoozeThroughTheNightsOfSummerTime) {
    const SetVariable inCentralEurope("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    const DateTime nights[] = {Day(2026, 3, 29, 0, 51),      Day(2026, 3, 29, 0, 59, 59), Day(2026, 10, 25, 0, 51),
                               Day(2026, 10, 25, 0, 59, 59), Day(2026, 10, 24, 23, 30),   Day(2026, 7, 1)};
    for (const DateTime& night : nights) {
        const ZoneClock start(night);
        CTmReminder reminder = PopupAt("a", start.Now());
        reminder.EventStart = start.Now().PlusSeconds(5 * 3600);
        Put({reminder});
        const std::vector<SnoozeChoice> choices = SnoozeChoices(reminder, start.Now());
        for (const SnoozeChoice& choice : choices) {
            SCOPED_TRACE(DateFieldText(night) + " " + choice.text);
            std::filesystem::remove(shownPath);
            ZoneClock zone(night);
            PopupAgent agent(remPath, shownPath, zone, faults, {[] {}, [] {}, [] {}, [] {}});
            agent.Start();
            ASSERT_EQ(agent.Schedule().OnScreen().size(), 1u);
            agent.Snooze(KeyOf(reminder), choice);
            int64_t passed = 0;
            while (agent.Look(), agent.Schedule().OnScreen().empty() && passed < 100000) {
                const int64_t step = std::max<int64_t>(agent.SecondsToNextLook(), 1);
                zone.utc += step;
                passed += step;
            }
            if (choice.isSpan)
                EXPECT_EQ(passed, choice.until.Seconds() - start.Now().Seconds());
            else
                EXPECT_EQ(zone.Now(), choice.until);
            EXPECT_FALSE(agent.Schedule().OnScreen().front().isLate);
        }
    }
}

TEST_F(ReminderAgent, TakesTheMessagesOfTheProgram) {
    PopupAgent agent = MakeAgent();
    const std::tuple<uint32_t, std::string, uint32_t> messages[] = {
        {InstanceMessage::kIsMe, "", 1},
        {InstanceMessage::kActivate, "", 1},
        {InstanceMessage::kDocument, "", 1},
        {InstanceMessage::kCommand, "x TQRAGENTCHECKSETTINGS y", 1},
        {InstanceMessage::kCommand, "TQRAGENTCLOSE", 1},
        {InstanceMessage::kCommand, "TQRCLOSELOREBINDER", 0},
        {InstanceMessage::kCommand, "", 0},
        {77, "TQRAGENTCLOSE", 0}};
    for (const auto& [tag, text, answer] : messages)
        EXPECT_EQ(agent.Receive({tag, text}), answer) << text;
    EXPECT_EQ(std::tuple(looks, checks, fronts, closes), std::tuple(0, 1, 1, 1));
}

TEST_F(ReminderAgent, GoesOnWithFilesThatItCantReadOrWriteAndSaysSoOnce) {
    Put({PopupAt("a", clock.now.PlusSeconds(60))});
    std::filesystem::create_directories(shownPath / "x");
    PopupAgent agent = MakeAgent();
    agent.Start();
    ASSERT_EQ(faults.faults.size(), 1u);
    std::filesystem::remove(remPath);
    std::filesystem::create_directories(remPath / "x");
    agent.Look();
    agent.Look();
    EXPECT_EQ(faults.faults.size(), 2u) << "once for each file";
    clock.now = clock.now.PlusSeconds(60);
    EXPECT_TRUE(agent.Look());
    EXPECT_THAT(Screen(agent.Schedule()), ElementsAre("a"));
    EXPECT_FALSE(agent.Look());
    EXPECT_TRUE(std::filesystem::exists(shownPath / "x"));
}

TEST_F(ReminderAgent, ShowsNothingAgainAndAgainOfADamagedFile) {
    ReminderList reminders = {PopupAt("", clock.now), PopupAt("a", clock.now.PlusSeconds(-5)), PopupAt("b", clock.now)};
    Put(reminders);
    const std::string whole = BytesOf(remPath);
    for (size_t cut = 0; cut < whole.size(); cut += 7) {
        for (const bool flips : {false, true}) {
            std::string bytes = flips ? whole : whole.substr(0, cut);
            if (flips)
                bytes[cut] ^= 0x15;
            PutBytes(remPath, bytes);
            std::filesystem::remove(shownPath);
            Shows();
            EXPECT_THAT(Shows(), IsEmpty()) << cut;
        }
    }
    PutBytes(remPath, whole);
    Shows();
    const std::string shown = BytesOf(shownPath);
    for (size_t cut = 0; cut < shown.size(); ++cut) {
        PutBytes(shownPath, shown.substr(0, cut));
        EXPECT_LE(Shows().size(), 3u);
        EXPECT_THAT(Shows(), IsEmpty()) << "what came again is kept: " << cut;
    }
}

}  // namespace
}  // namespace lore
