#include "calendar/event_reminders.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "calendar/date_arithmetic.h"
#include "calendar/server_reminders.h"

namespace lore {

namespace {

bool IsPopup(const CTmReminder& reminder) {
    return reminder.Type == static_cast<int32_t>(ReminderType::Popup);
}

/// Brings `current` to the server and takes off it what stands in `old` alone. False if any operation failed.
bool UpdateServer(const CalendarWorld& world, ReminderList& current, ReminderList& old) {
    bool succeeded = true;
    for (CTmReminder& reminder : current) {
        if (IsServerReminder(reminder)) {
            succeeded = RegisterOnServer(world, reminder) && succeeded;
            continue;
        }
        reminder.ServerId = -1;
        // One that the server was to send and that is a popup now.
        if (const CTmReminder* const before = FindReminder(old, reminder.ReminderId); before && before->ServerId > 0) {
            reminder.ServerDone = RemoveFromServer(world, *before);
            succeeded = reminder.ServerDone && succeeded;
        }
    }
    for (CTmReminder& reminder : old) {
        if (FindReminder(current, reminder.ReminderId) || reminder.ServerId <= 0)
            continue;
        reminder.ServerDone = RemoveFromServer(world, reminder);
        succeeded = reminder.ServerDone && succeeded;
    }
    return succeeded;
}

/// Undoes in the lists what the server didn't do. Popups take part in this too: with a failed check a change of a popup
/// isn't applied.
/// @param stored the old reminders as the file holds them
void UndoFailed(ReminderList& current, const ReminderList& old, const ReminderList& stored) {
    std::erase_if(current, [&](CTmReminder& reminder) {
        if (reminder.ServerDone)
            return false;
        const CTmReminder* before = FindReminder(stored, reminder.ReminderId);
        if (before)
            reminder = *before;
        return before == nullptr;
    });
    for (const CTmReminder& reminder : old) {
        if (!reminder.ServerDone && !FindReminder(current, reminder.ReminderId))
            current.push_back(*FindReminder(stored, reminder.ReminderId));
    }
}

/// Brings the reminders of an event within `all` to those that it holds, and so on the server. False if they are the
/// same.
bool BringReminders(const CalendarWorld& world, ReminderList& all, CTmEvent& event, Report report) {
    const ReminderList stored = RemindersOfEvent(all, event.EventId);
    ReminderList& current = event.Reminders;
    if (!RemindersDiffer(current, stored))
        return false;
    if (report == Report::Shown)
        world.ShowProgress("Updating the Reminders....");
    if (HasServerReminder(current) || HasServerReminder(stored)) {
        ReminderList old = stored;
        ClearServerDone(current);
        ClearServerDone(old);
        bool succeeded = CheckServer(world, Report::Shown) == ServerCheck::Answers;
        if (succeeded) {
            if (report == Report::Shown)
                world.ShowProgress("Updating Reminders on the server....");
            succeeded = UpdateServer(world, current, old);
        }
        if (!succeeded) {
            UndoFailed(current, old, stored);
            TellReminderFailure(world, ReminderFailure::NotAllUpdated);
        }
    } else {
        ClearServerIds(current);
    }
    RemoveReminders(all, stored);
    AddReminders(all, current);
    return true;
}

/// What a reminder says of its event.
struct Copies {
    const std::string &label, &description;
    DateTime start;  ///< invalid where it stays
};

/// True if it said something else. The start is that of a reminder at a time of its own alone.
bool SetCopies(CTmReminder& reminder, const Copies& copies) {
    const DateTime before = reminder.EventStart;
    const DateTime start = reminder.PriorMinutes < 0 && copies.start.IsValid() ? copies.start : before;
    if (reminder.EventLabel == copies.label && reminder.EventDescription == copies.description && before == start)
        return false;
    reminder.EventLabel = copies.label;
    reminder.EventDescription = copies.description;
    reminder.EventStart = start;
    return true;
}

std::unordered_set<std::string_view> IdsOf(const EventList& events) {
    std::unordered_set<std::string_view> ids;
    for (const CTmEvent& event : events)
        ids.insert(event.EventId);
    return ids;
}

/// Takes reminders off the server. False if any of them is still there.
bool RemoveAllFromServer(const CalendarWorld& world, const ReminderList& reminders) {
    bool succeeded = true;
    for (const CTmReminder& reminder : reminders)
        succeeded = RemoveFromServer(world, reminder) && succeeded;
    return succeeded;
}

/// False for a failure that is to be told. One event's reminders count a server that the user gave up on as none.
bool LeaveServer(const CalendarWorld& world, const LeavingReminders& reminders, Report report) {
    if (!HasServerReminder(reminders.leaving))
        return true;
    const ServerCheck check = CheckServer(world, report);
    if (check == ServerCheck::Answers)
        return RemoveAllFromServer(world, reminders.leaving);
    return check == ServerCheck::NoAnswer && reminders.isOfOneEvent;
}

}  // namespace

CTmReminder CopyReminder(const CTmReminder& reminder, const CTmEvent& event, GuidSource& guids) {
    CTmReminder copy = reminder;
    copy.ServerId = -1;
    copy.ServerDone = false;
    copy.ReminderId = guids.NewGuid();
    copy.EventId = event.EventId;
    copy.EventStart = event.Start;
    copy.EventLabel = event.Label;
    copy.EventDescription = event.Description;
    copy.SendTime = event.Start.PlusSeconds(-SpanBetween(reminder.SendTime, reminder.EventStart).seconds);
    return copy;
}

void CopyReminders(const CTmEvent& source, CTmEvent& target, GuidSource& guids) {
    ReminderList copies;
    copies.reserve(source.Reminders.size());
    for (const CTmReminder& reminder : source.Reminders)
        copies.push_back(CopyReminder(reminder, target, guids));
    target.Reminders = std::move(copies);
}

void FollowStart(CTmReminder& reminder, const DateTime& start) {
    if (reminder.PriorMinutes < 0 || reminder.EventStart == start)
        return;
    const DateSpan span = SpanBetween(reminder.SendTime, reminder.EventStart);
    reminder.EventStart = start;
    reminder.SendTime = start.PlusSeconds(-span.seconds);
}

void CreateSeriesReminders(const CalendarWorld& world, ReminderList reminders) {
    if (reminders.empty())
        return;
    world.ShowProgress("Creating Reminders....");
    const auto check = HasServerReminder(reminders) ? std::optional(CheckServer(world, Report::Shown)) : std::nullopt;
    bool failed = check == ServerCheck::TriedInVain;
    if (check == ServerCheck::Answers) {
        world.ShowProgress("Creating Reminders on the server....", 150);
        ReminderList none;
        failed = !UpdateServer(world, reminders, none);
    }
    world.ShowProgress("Saving Reminders locally....", 200);
    ReminderList all;
    if (LoadReminders(world, all)) {
        std::erase_if(reminders, [](const CTmReminder& r) { return !r.ServerDone && !IsPopup(r); });
        AddReminders(all, reminders);
        SaveReminders(world, all);
    }
    world.progress.Hide();
    if (failed)
        TellReminderFailure(world, ReminderFailure::NotAllUpdated);
}

bool DescribeEvents(ReminderList& reminders, std::span<const CTmEvent> events) {
    std::unordered_map<std::string_view, Copies> owners;
    for (const CTmEvent& event : events)
        owners.emplace(event.EventId, Copies{event.Label, event.Description,
                                             IsSeriesMember(event) ? DateTime::Invalid() : event.Start});
    bool changed = false;
    for (CTmReminder& reminder : reminders) {
        const auto owner = owners.find(reminder.EventId);
        if (owner != owners.end())
            changed = SetCopies(reminder, owner->second) || changed;
    }
    return changed;
}

void UpdateEventReminders(const CalendarWorld& world, CTmEvent& event, Report report) {
    ReminderList all;
    if (!LoadReminders(world, all))
        return;
    const bool changed = BringReminders(world, all, event, report);
    if (DescribeEvents(all, std::span(&event, 1)) || changed)
        SaveReminders(world, all);
    if (changed)
        world.progress.Hide();
    event.Reminders = RemindersOfEvent(all, event.EventId);
}

void TakeBackEventReminders(const CalendarWorld& world, CTmEvent event, const ReminderList& before) {
    ReminderList all;
    if (!LoadReminders(world, all))
        return;
    // First of all, for what they only say of the event is no change that the server should hear of.
    bool described = false;
    for (CTmReminder& reminder : all) {
        const CTmReminder* const old = FindReminder(before, reminder.ReminderId);
        if (old && reminder.EventId == event.EventId)
            described = SetCopies(reminder, {old->EventLabel, old->EventDescription, old->EventStart}) || described;
    }
    event.Reminders = before;
    const bool changed = BringReminders(world, all, event, Report::Silent);
    if (described || changed)
        SaveReminders(world, all);
    if (changed)
        world.progress.Hide();
}

LeavingReminders RemindersLeavingWith(const CTmEvent& event, ReminderList all) {
    ReminderList leaving = event.Reminders.empty() ? RemindersOfEvent(all, event.EventId) : event.Reminders;
    RemoveReminders(all, leaving);
    return {.leaving = std::move(leaving), .staying = std::move(all), .isOfOneEvent = true};
}

LeavingReminders RemindersLeavingWith(const EventList& events, ReminderList all) {
    const auto ids = IdsOf(events);
    const auto rest =
        std::stable_partition(all.begin(), all.end(), [&](const CTmReminder& r) { return !ids.contains(r.EventId); });
    ReminderList leaving(rest, all.end());
    all.erase(rest, all.end());
    return {.leaving = std::move(leaving), .staying = std::move(all)};
}

bool RemoveLeaving(const CalendarWorld& world, const LeavingReminders& reminders, Report report,
                   const std::function<bool()>& write) {
    if (report == Report::Shown)
        world.ShowProgress("Updating Event's Reminders....");
    const bool succeeded = LeaveServer(world, reminders, report);
    const bool written = write();
    if (report == Report::Shown && !succeeded)
        TellReminderFailure(world,
                            reminders.isOfOneEvent ? ReminderFailure::NotAllUpdated : ReminderFailure::NotAllRemoved);
    return written;
}

void RemoveRemindersOfEvents(const CalendarWorld& world, const EventList& events, Report report) {
    ReminderList all;
    if (!LoadReminders(world, all))
        return;
    const LeavingReminders reminders = RemindersLeavingWith(events, std::move(all));
    if (!reminders.leaving.empty())
        RemoveLeaving(world, reminders, report, [&] { return SaveReminders(world, reminders.staying); });
}

ReminderList StoredReminders(const CalendarWorld& world, const std::string& eventId) {
    ReminderList all;
    LoadReminders(world, all);
    return RemindersOfEvent(all, eventId);
}

}  // namespace lore
