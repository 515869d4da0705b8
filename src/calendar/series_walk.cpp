#include "calendar/series_walk.h"

#include <algorithm>
#include <unordered_map>

#include "calendar/event_reminders.h"
#include "calendar/server_reminders.h"

namespace lore {

namespace {

constexpr int kPause = 150, kLastPause = 300;  // milliseconds
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

bool SeriesWalk::Run(EventList& events) {
    world_.ShowProgress(kLoading);
    if (!LoadReminders(world_, all_)) {
        world_.progress.Hide();
        return false;
    }
    stored_ = all_;
    world_.wait(kPause);
    TakeReminders(all_, events);
    ServerRun run;
    const auto hasServerReminder = [](const CTmEvent& event) { return HasServerReminder(event.Reminders); };
    if (hasServerReminder(changed_) || std::any_of(events.begin(), events.end(), hasServerReminder)) {
        world_.ShowProgress("Checking Internet Connection...");
        run.connected = CheckServer(world_, true, &run.inVain);
        if (!run.connected)
            world_.ShowProgress(kLoading);
    }
    world_.progress.SetRange(0, static_cast<int>(events.size()));
    for (size_t i = 0; i < events.size(); ++i) {
        const std::string text = "Updating Event " + std::to_string(i + 1) + " of " + std::to_string(events.size());
        world_.ShowProgress(text + "...");
        world_.progress.SetPosition(static_cast<int>(i));
        UpdateTexts(events[i]);
        if (!remindersDiffer_)
            continue;
        UpdateSeriesEventReminders(world_, events[i], changed_, text, run);
        AddReminders(all_, events[i].Reminders);
        world_.wait(kPause);
    }
    world_.ShowProgress("Finalizing Event changes...");
    if (remindersDiffer_)
        SaveReminders(world_, all_);
    world_.wait(kLastPause);
    world_.progress.Hide();
    if (!run.succeeded)
        TellReminderFailure(world_, ReminderFailure::NotAllSeriesUpdated);
    return true;
}

void SeriesWalk::TakeBack() {
    if (remindersDiffer_)
        SaveReminders(world_, stored_);
}

}  // namespace lore
