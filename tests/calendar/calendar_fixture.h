#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "calendar/calendar_world.h"
#include "calendar/event_builder.h"
#include "support/memory_store.h"
#include "support/read_world.h"
#include "support/scripted_agent.h"
#include "support/scripted_ports.h"

namespace lore {

/// A reminder server that notes what is asked of it and answers as laid out.
class ScriptedServer : public ReminderServer {
public:
    bool IsSetUp() const override { return isSetUp; }
    int32_t TestServerConnection() override {
        calls.push_back("test");
        return tests.empty() ? works : Next(tests);
    }
    DateTime GetServerTime() override { return time; }
    int32_t InsertUpdateNotification(const ReminderNotification& n) override {
        calls.push_back("insert " + std::to_string(n.serverId) + " " + n.type + " " + n.sendTime + " " + n.sendTo);
        messages.push_back(n.message);
        return results.empty() ? (works ? ++lastNumber : 0) : Next(results);
    }
    int32_t SetDeleteNotification(int32_t serverId) override {
        calls.push_back("delete " + std::to_string(serverId));
        return results.empty() ? works : Next(results);
    }
    void SendTestTxtMsg(const std::string& address) override { calls.push_back("send " + address); }

    bool isSetUp = true;
    int32_t works = 1;
    std::deque<int32_t> tests, results;  ///< taken before `works`
    DateTime time = Day(2026, 3, 14, 8, 26);
    std::vector<std::string> calls, messages;
    int32_t lastNumber = 100;

private:
    static int32_t Next(std::deque<int32_t>& queue) {
        const int32_t value = queue.front();
        queue.pop_front();
        return value;
    }
};

class ScriptedQuestion : public SeriesQuestion {
public:
    SeriesReach Ask(ModifyEventMode mode) override {
        EXPECT_EQ(mode, ModifyEventMode::Modify);
        ++asked;
        return answer;
    }
    SeriesReach answer = SeriesReach::Cancel;
    int asked = 0;
};

/// The calendar in a folder of its own at 09:26:53 on 14 March 2026; the server's clock is an hour behind.
class CalendarTest : public testing::Test, protected ScriptedPorts {
protected:
    /// The events of the file, with their reminders.
    EventList Stored() {
        EventList events;
        EXPECT_TRUE(LoadEvents(world, events));
        const ReminderList reminders = StoredReminders();
        for (CTmEvent& event : events)
            event.Reminders = RemindersOfEvent(reminders, event.EventId);
        return events;
    }
    ReminderList StoredReminders() {
        ReminderList reminders;
        EXPECT_TRUE(LoadReminders(world, reminders));
        return reminders;
    }
    void Put(const EventList& events) {
        ASSERT_TRUE(SaveEvents(world, events));
        ReminderList reminders;
        for (const CTmEvent& event : events)
            AddReminders(reminders, event.Reminders);
        ASSERT_TRUE(reminders.empty() || SaveReminders(world, reminders));
    }
    CTmReminder ReminderFor(const CTmEvent& event, ReminderType type, int minutes) {
        CTmReminder reminder = NewReminder(world.Context());
        reminder.Type = static_cast<int32_t>(type);
        reminder.PriorMinutes = minutes;
        reminder.EventId = event.EventId;
        reminder.EventStart = event.Start;
        reminder.SendTime = event.Start.PlusSeconds(-60 * minutes);
        reminder.SendTo = type == ReminderType::Popup ? "" : "a@example.com";
        return reminder;
    }
    /// "01/03 - 01/05: A": the days of the events with one label, in file order.
    static std::string Lines(const EventList& events) {
        std::string lines;
        for (const CTmEvent& event : events)
            lines += event.Start.Format("%m/%d %H:%M ") + event.Label + "\n";
        return lines;
    }
    std::vector<std::string> TakeMessages() { return std::exchange(progress.messages, {}); }

    static ReminderSetup SupportSetup() {
        ReminderSetup setup;
        setup.supportAddress = "help@example.com";
        return setup;
    }

    /// The world with this server of reminders.
    CalendarWorld WorldWith(ReminderServer& reminderServer) {
        return {.eventFile = folder / "Events.dat",
                .reminderFile = folder / "Rem.dat",
                .settings = settings,
                .prompts = prompts,
                .progress = progress,
                .clock = clock,
                .guids = guids,
                .faults = faults,
                .server = reminderServer,
                .question = question,
                .setup = SupportSetup(),
                .agent = &agent,
                .wait = [this](int ms) { waits.push_back(ms); }};
    }

    TempFolder folder{MemoryFolder()};
    MemoryStore store;
    Settings settings;
    ScriptedServer server;
    ScriptedAgent agent;
    ScriptedQuestion question;
    std::vector<int> waits;
    CalendarWorld world = WorldWith(server);
};

}  // namespace lore
