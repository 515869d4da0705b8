#include "calendar/series_walk.h"

#include <algorithm>
#include <unordered_map>

#include "calendar/event_reminders.h"
#include "calendar/server_reminders.h"

namespace lore {

namespace {

constexpr int kPause = 150, kServerPause = 200, kLastPause = 300;  // milliseconds
constexpr char kLoading[] = "Loading Reminders....";

/// Takes the reminders of some events out of a list; each event has its own afterwards.
void TakeReminders(ReminderList& all, EventList& events) {
    std::unordered_map<std::string_view, ReminderList*> owners;
    for (CTmEvent& event : events) {
        event.Reminders.clear();
        owners.emplace(event.EventId, &event.Reminders);
    }
    std::erase_if(all, [&](CTmReminder& reminder) {
        const auto owner = owners.find(reminder.EventId);
        if (owner == owners.end())
            return false;
        owner->second->push_back(std::move(reminder));
        return true;
    });
}

}  // namespace

SeriesWalk::SeriesWalk(const CalendarWorld& world, const CTmEvent& changed, const CTmEvent& old)
    : world_(world),
      changed_(changed),
      old_(old),
      remindersDiffer_(RemindersDiffer(changed.Reminders, old.Reminders)) {}

void SeriesWalk::UpdateTexts(CTmEvent& event) const {
    if (changed_.Label != old_.Label)
        event.Label = changed_.Label;
    if (changed_.Description != old_.Description)
        event.Description = changed_.Description;
    if (changed_.BarColor != old_.BarColor)
        event.BarColor = changed_.BarColor;
}

void SeriesWalk::Connect() {
    world_.ShowProgress("Checking Internet Connection...");
    check_ = CheckServer(world_, Report::Shown);
    if (check_ != ServerCheck::Answers)
        world_.ShowProgress(kLoading);
}

/// False if it isn't done there.
bool SeriesWalk::TryOnServer(const std::string& progressText, int pause, const std::function<bool()>& change) {
    const bool isConnected = check_ == ServerCheck::Answers;
    if (isConnected)
        world_.ShowProgress(progressText + "..contacting server", pause);
    const bool done = isConnected && change();
    if (!done && check_ != ServerCheck::NoAnswer)
        serverFailed_ = true;
    return done;
}

/// Brings the reminders of an event to those of the changed one: what is the same across events stays, the rest goes,
/// what is missing is made.
void SeriesWalk::UpdateReminders(CTmEvent& event, const std::string& progressText) {
    ReminderList kept;
    for (const CTmReminder& reminder : event.Reminders) {
        if (HasSameReminder(changed_.Reminders, reminder)) {
            kept.push_back(reminder);
        } else if (reminder.ServerId > 0) {
            TryOnServer(progressText, kPause, [&] { return RemoveFromServer(world_, reminder); });
        }
    }
    world_.ShowProgress(progressText + "..local update");
    for (const CTmReminder& reminder : changed_.Reminders) {
        if (HasSameReminder(event.Reminders, reminder))
            continue;
        CTmReminder copy = CopyReminder(reminder, event, world_.guids);
        if (!IsServerReminder(copy) ||
            TryOnServer(progressText, kServerPause, [&] { return RegisterOnServer(world_, copy); }))
            kept.push_back(copy);
    }
    event.Reminders = std::move(kept);
    world_.wait(kPause);
}

void SeriesWalk::WriteReminders(const EventList& events) {
    if (!remindersDiffer_)
        all_ = stored_;
    written_ = DescribeEvents(all_, events) || remindersDiffer_;
    if (written_)
        SaveReminders(world_, all_);
}

bool SeriesWalk::Run(EventList& events) {
    world_.ShowProgress(kLoading);
    if (!LoadReminders(world_, all_)) {
        world_.progress.Hide();
        return false;
    }
    stored_ = all_;
    world_.wait(kPause);
    TakeReminders(all_, events);
    const auto hasServerReminder = [](const CTmEvent& event) { return HasServerReminder(event.Reminders); };
    if (hasServerReminder(changed_) || std::any_of(events.begin(), events.end(), hasServerReminder))
        Connect();
    world_.progress.SetRange(0, static_cast<int>(events.size()));
    for (size_t i = 0; i < events.size(); ++i) {
        const std::string text = "Updating Event " + std::to_string(i + 1) + " of " + std::to_string(events.size());
        world_.ShowProgress(text + "...");
        world_.progress.SetPosition(static_cast<int>(i));
        UpdateTexts(events[i]);
        if (!remindersDiffer_)
            continue;
        UpdateReminders(events[i], text);
        AddReminders(all_, events[i].Reminders);
        world_.wait(kPause);
    }
    world_.ShowProgress("Finalizing Event changes...");
    WriteReminders(events);
    world_.wait(kLastPause);
    world_.progress.Hide();
    if (serverFailed_)
        TellReminderFailure(world_, ReminderFailure::NotAllSeriesUpdated);
    return true;
}

void SeriesWalk::TakeBack() {
    if (written_)
        SaveReminders(world_, stored_);
}

}  // namespace lore
