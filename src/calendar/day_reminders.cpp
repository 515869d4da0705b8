#include "calendar/day_reminders.h"

#include "calendar/date_arithmetic.h"
#include "calendar/server_reminders.h"
#include "calendar/ten_minutes.h"

namespace lore {

namespace {

constexpr int kServerPause = 150, kLocalPause = 200;  // milliseconds

/// The progress texts of one kind of change.
struct ChangeTexts {
    const char *begin, *server, *local;
    ReminderFailure failure;
};
constexpr ChangeTexts kCreating = {"Creating Reminder....", "Creating Reminder on the server....",
                                   "Saving Reminder locally....", ReminderFailure::DayNotCreated};
constexpr ChangeTexts kUpdating = {"Updating Reminder....", "Updating Reminder on the server....",
                                   "Saving Reminder locally....", ReminderFailure::DayNotUpdated};
constexpr ChangeTexts kDeleting = {"Deleting Reminder....", "Deleting Reminder on the server....",
                                   "Deleting Reminder locally....", ReminderFailure::DayNotDeleted};

/// Whether the server has a part in a change, and whether it is asked first if it is there.
enum class ServerPart { None, Unchecked, Checked };

/// Does `onServer` if the server has a part in it, and then `change(all)` on the list of the file.
template <typename OnServer, typename Change>
bool Apply(const CalendarWorld& world, const ChangeTexts& texts, ServerPart part, OnServer onServer, Change change) {
    world.ShowProgress(texts.begin);
    bool succeeded = part != ServerPart::Checked || CheckServer(world, Report::Shown) == ServerCheck::Answers;
    if (succeeded && part != ServerPart::None) {
        world.ShowProgress(texts.server, kServerPause);
        succeeded = onServer();
    }
    bool saved = false;
    if (succeeded) {
        world.ShowProgress(texts.local, kLocalPause);
        ReminderList all;
        if (LoadReminders(world, all)) {
            change(all);
            saved = SaveReminders(world, all);
        }
    }
    world.progress.Hide();
    if (!succeeded)
        TellReminderFailure(world, texts.failure);
    if (saved)
        world.TellAgent();
    return saved;
}

ServerPart PartIn(bool needsServer) {
    return needsServer ? ServerPart::Checked : ServerPart::None;
}

}  // namespace

bool SaveNewReminder(const CalendarWorld& world, CTmReminder reminder) {
    return Apply(
        world, kCreating, PartIn(IsServerReminder(reminder)), [&] { return RegisterOnServer(world, reminder); },
        [&](ReminderList& all) { all.push_back(reminder); });
}

bool SaveChangedReminder(const CalendarWorld& world, CTmReminder reminder) {
    ReminderList before;
    if (!LoadReminders(world, before))
        return false;
    const CTmReminder* stored = FindReminder(before, reminder.ReminderId);
    const bool leavesServer = stored && stored->ServerId > 0 && !IsServerReminder(reminder);
    const auto onServer = [&] {
        return leavesServer ? RemoveFromServer(world, *stored) : RegisterOnServer(world, reminder);
    };
    const ServerPart part = PartIn(leavesServer || IsServerReminder(reminder));
    return Apply(world, kUpdating, part, onServer, [&](ReminderList& all) {
        if (!ReplaceReminder(all, reminder))
            all.push_back(reminder);
    });
}

bool DeleteReminder(const CalendarWorld& world, const CTmReminder& reminder) {
    if (world.prompts.Ask("Do you wish to delete this reminder?", "Delete Reminder?") != PromptAnswer::Yes)
        return false;
    // Where no server is set up any more, there is none to keep the record for.
    const bool isOnServer = IsServerReminder(reminder) && reminder.ServerId > 0 && world.server.IsSetUp();
    return Apply(
        world, kDeleting, isOnServer ? ServerPart::Unchecked : ServerPart::None,
        [&] { return RemoveFromServer(world, reminder); },
        [&](ReminderList& all) { RemoveReminder(all, reminder.ReminderId); });
}

DateTime FirstSendTime(const DateTime& now, const DateTime* day) {
    if (day && day->IsValid() && !IsSameDay(*day, now))
        return day->Midnight().PlusSeconds(8 * kHour);
    return NextTenMinutes(now.PlusSeconds(kHour - now.Second()));
}

}  // namespace lore
