#include <functional>
#include <gtest/gtest.h>

#include "calendar/event_builder.h"
#include "calendar/reminder_list.h"
#include "support/each.h"

namespace lore {
namespace {

CTmReminder Reminder(const std::string& id, ReminderType type = ReminderType::Popup) {
    CTmReminder reminder;
    reminder.ReminderId = id;
    reminder.Type = static_cast<int32_t>(type);
    reminder.SendTime = Day(2011, 2, 3, 8, 55);
    reminder.EventStart = Day(2011, 2, 3, 9, 5);
    return reminder;
}

TEST(Reminder, IsComparedInItsOwnEventAndAcrossASeries) {
    const std::tuple<const char*, std::function<void(CTmReminder&)>, bool, bool> cases[] = {
        {"nothing", [](CTmReminder&) {}, false, true},
        {"id", [](CTmReminder& r) { r.ReminderId = "{Q}"; }, true, true},
        {"type", [](CTmReminder& r) { r.Type = 2; }, true, false},
        {"offset", [](CTmReminder& r) { r.PriorMinutes = -1; }, true, false},
        {"event", [](CTmReminder& r) { r.EventId = "{E}"; }, true, true},
        {"message", [](CTmReminder& r) { r.Message = "x"; }, true, false},
        {"address", [](CTmReminder& r) { r.SendTo = "x"; }, true, false},
        {"server time", [](CTmReminder& r) { r.ServerSendTime = Day(2011, 1, 1); }, true, true},
        {"send time", [](CTmReminder& r) { r.SendTime = r.SendTime.PlusSeconds(1); }, true, false},
        {"both a week later",
         [](CTmReminder& r) { r.SendTime = r.SendTime.PlusDays(7), r.EventStart = r.EventStart.PlusDays(7); }, true,
         true},
        {"server number", [](CTmReminder& r) { r.ServerId = 7; }, true, true},
        {"server done", [](CTmReminder& r) { r.ServerDone = true; }, true, true},
        {"provider", [](CTmReminder& r) { r.ProviderIndex = 7; }, false, true},
        {"what was entered", [](CTmReminder& r) { r.EmailAddress = r.PhoneNumber = "x"; }, false, true},
        {"the event's texts", [](CTmReminder& r) { r.EventLabel = r.EventDescription = "x"; }, false, true},
    };
    for (const auto& [name, change, differs, same] : cases) {
        SCOPED_TRACE(name);
        const CTmReminder before = Reminder("{R}");
        CTmReminder after = before;
        change(after);
        EXPECT_EQ(ReminderDiffers(after, before), differs);
        EXPECT_EQ(SameReminder(after, before), same);
        EXPECT_EQ(RemindersDiffer({after}, {before}), differs);
        EXPECT_EQ(HasSameReminder({Reminder("{X}", ReminderType::Email), before}, after), same || after.Type == 1);
    }
}

TEST(Reminder, ListsDifferByPartnersAndCountAlone) {
    const CTmReminder a = Reminder("a"), b = Reminder("b");
    EXPECT_FALSE(RemindersDiffer({a, b}, {b, a}));
    EXPECT_TRUE(RemindersDiffer({a, b}, {a}));
    EXPECT_FALSE(RemindersDiffer({a, a}, {a, b})) << "each of the first list has a partner";
    EXPECT_TRUE(RemindersDiffer({a, b}, {a, a}));
}

TEST(Reminder, IsRemovedOncePerRecordOfTheOtherList) {
    ReminderList list = {Reminder("a"), Reminder("b"), Reminder("a"), Reminder("c"), Reminder("a")};
    RemoveReminders(list, {Reminder("a"), Reminder("x"), Reminder("a"), Reminder("c")});
    EXPECT_EQ(Each(list, &CTmReminder::ReminderId), (std::vector<std::string>{"b", "a"}));
    CTmReminder changed = Reminder("a");
    changed.Message = "new";
    EXPECT_TRUE(ReplaceReminder(list, changed));
    EXPECT_EQ(FindReminder(list, "a")->Message, "new");
    EXPECT_FALSE(ReplaceReminder(list, Reminder("A")));
    EXPECT_EQ(FindReminder(list, "A"), nullptr);
    EXPECT_TRUE(RemoveReminder(list, "b"));
    EXPECT_FALSE(RemoveReminder(list, "b"));
}

TEST(Reminder, ListsAreFilteredByEventAndDay) {
    ReminderList list = {Reminder("a", ReminderType::Popup), Reminder("b", ReminderType::TextMessage), Reminder("c")};
    list[0].EventId = list[1].EventId = "{E}";
    list[1].SendTime = Day(2011, 2, 3, 23, 59, 59);
    list[2].SendTime = Day(2011, 2, 4);
    EXPECT_EQ(RemindersOfEvent(list, "{E}").size(), 2u);
    EXPECT_EQ(RemindersOfEvent(list, "").size(), 1u);
    EXPECT_EQ(RemindersOnDate(list, Day(2011, 2, 3, 12)).size(), 2u);
    list[2].SendTime = DateTime();
    EXPECT_TRUE(RemindersOnDate(list, DateTime()).empty());
    EXPECT_TRUE(HasServerReminder(list));
    list[1].Type = 3;
    EXPECT_FALSE(HasServerReminder(list)) << "a number that is no type reaches no server";
    EXPECT_STREQ(ReminderTypeName(list[1].Type), "");
}

}  // namespace
}  // namespace lore
