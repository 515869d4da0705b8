#include <algorithm>
#include <cerrno>
#include <utility>

#include "calendar/calendar_fixture.h"
#include "calendar/event_changes.h"
#include "support/each.h"
#include "support/faults.h"
#include "support/matchers.h"

namespace lore {
namespace {

using Texts = std::vector<std::string>;
using Remove = bool (*)(const CalendarWorld&, const CTmEvent&);

/// A single event with a popup and an e-mail, and a daily series of three days with a popup before each.
class EventRemoval : public CalendarTest {
protected:
    void SetUp() override {
        CTmEvent single = Event("{single}", "", Day(2026, 4, 11, 9), Day(2026, 4, 11, 10));
        single.Reminders = {ReminderFor(single, ReminderType::Popup, 10), ReminderFor(single, ReminderType::Email, 20)};
        single.Reminders[1].ServerId = 7;
        Put({single});
        CTmEvent series = Series(kDaily, {1, 0, 1}, Day(2026, 4, 10, 9, 5), Day(2026, 4, 12, 9, 5));
        series.Reminders = {ReminderFor(series, ReminderType::Popup, 60)};
        ASSERT_EQ(CreateEvent(world, series), EventSave::Saved);
        events_ = Stored();
        before_ = Files();
    }
    /// Both files as they were at first, a user who says yes, and nothing told yet.
    void Begin() {
        PutBytes(world.eventFile, before_.first);
        PutBytes(world.reminderFile, before_.second);
        prompts.answers = {PromptAnswer::Yes};
        faults.faults.clear();
        server.calls.clear();
    }
    std::pair<std::string, std::string> Files() { return {BytesOf(world.eventFile), BytesOf(world.reminderFile)}; }
    bool HasOrphans() {
        const EventList events = Stored();
        const ReminderList reminders = StoredReminders();
        return std::any_of(reminders.begin(), reminders.end(),
                           [&](const CTmReminder& reminder) { return FindEventIndex(events, reminder.EventId) < 0; });
    }
    /// Both files once an event is removed as asked.
    std::pair<std::string, std::string> FilesAfter(Remove remove, const CTmEvent& event) {
        Begin();
        EXPECT_TRUE(remove(world, event));
        return Files();
    }
    /// The rows for what goes of these events: the first stands alone.
    std::vector<std::pair<Remove, CTmEvent>> Removals() const {
        return {{DeleteEvent, events_[0]},
                {DeleteSingleEvent, events_[2]},
                {DeleteFollowingEvents, events_[2]},
                {DeleteEntireSeries, events_[1]}};
    }

    EventList events_;
    std::pair<std::string, std::string> before_;
};

TEST_F(EventRemoval, AFailureLeavesBothFilesOrNeither) {
    for (const auto& [remove, event] : Removals()) {
        const Remove removal = remove;
        const CTmEvent& gone = event;
        const auto after = FilesAfter(removal, gone);
        for (const int error : {EIO, ENOSPC}) {
            const long calls = FailEachCall(
                folder.Path(), error, false, [this] { Begin(); }, [&] { return removal(world, gone); },
                [&](bool isDone, bool) {
                    EXPECT_TRUE(Files() == after || (!isDone && Files() == before_));
                    EXPECT_EQ(faults.faults.empty(), isDone);
                    EXPECT_FALSE(HasTemporary(folder.Path()));
                    prompts.answers = {PromptAnswer::Yes};
                    EXPECT_TRUE(removal(world, gone)) << "tried again";
                    EXPECT_EQ(Files(), after);
                });
            EXPECT_GT(calls, 20);
        }
    }
}

TEST_F(EventRemoval, ADiskThatGoesOnFailingLeavesNoReminderOfWhatIsGone) {
    for (const auto& [remove, event] : Removals()) {
        const Remove removal = remove;
        const CTmEvent& gone = event;
        const auto after = FilesAfter(removal, gone);
        int lost = 0;
        FailEachCall(
            folder.Path(), ENOSPC, true, [this] { Begin(); }, [&] { return removal(world, gone); },
            [&](bool isDone, bool) {
                EXPECT_EQ(faults.faults.empty(), isDone);
                EXPECT_FALSE(HasOrphans());
                if (Files() == before_ || Files() == after)
                    return;
                ++lost;
                EXPECT_EQ(Files(), std::pair(before_.first, after.second));
                EXPECT_TRUE(std::all_of(faults.faults.begin(), faults.faults.end(),
                                        [](const Fault& fault) { return fault.what.ends_with("could not be saved"); }));
                EXPECT_EQ(faults.faults.back().what, "The reminders could not be saved") << "that they are lost";
                EXPECT_GE(faults.faults.size(), 2u);
                prompts.answers = {PromptAnswer::Yes};
                EXPECT_TRUE(removal(world, gone));
                EXPECT_EQ(Files(), after);
            });
        EXPECT_EQ(lost, 4) << "the folder's flush, in three calls, and the second rename";
    }
}

TEST_F(EventRemoval, TheServerHearsOnlyOfWhatTheDiskHasTaken) {
    int late = 0;
    FailEachCall(
        folder.Path(), ENOSPC, false, [this] { Begin(); }, [&] { return DeleteEvent(world, events_[0]); },
        [&](bool isDone, bool) {
            const Texts asked = isDone || !server.calls.empty() ? Texts{"test", "delete 7"} : Texts{};
            EXPECT_EQ(server.calls, asked);
            late += !isDone && !asked.empty();
        });
    EXPECT_EQ(late, 6) << "two renames, each with the opening and the flush of the folder";
}

TEST_F(EventRemoval, TheFilesStandWhileTheServerIsAskedAbout) {
    Begin();
    server.works = 0;
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::No};
    std::vector<bool> asItWas;
    prompts.whileShown = [&] { asItWas.push_back(Files() == before_); };
    EXPECT_TRUE(DeleteEvent(world, events_[0]));
    EXPECT_EQ(asItWas, (std::vector<bool>{true, true})) << "the question whether to go, and that about the server";
    EXPECT_NE(Files(), before_);
    EXPECT_FALSE(HasOrphans());
}

TEST_F(EventRemoval, RemindersThatStayAreNotWritten) {
    const CTmEvent bare = Event("{bare}", "", Day(2026, 4, 20, 9), Day(2026, 4, 20, 10));
    Begin();
    ASSERT_TRUE(MergeEvents(world, {bare}));
    const std::string odd = before_.second + "more";
    PutBytes(world.reminderFile, odd);
    EXPECT_TRUE(DeleteEvent(world, bare));
    EXPECT_EQ(Files(), std::pair(before_.first, odd));
    EXPECT_TRUE(faults.faults.empty());
    // Nor by events that can't be written.
    const auto [remove, event] = Removals()[1];
    const std::filesystem::path events = std::exchange(world.eventFile, folder / "none" / "Events.dat");
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_FALSE(remove(world, event));
    world.eventFile = events;
    EXPECT_EQ(Files(), std::pair(before_.first, odd));
}

}  // namespace
}  // namespace lore
