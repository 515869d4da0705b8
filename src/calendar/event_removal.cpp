#include "calendar/event_changes.h"
#include "calendar/event_reminders.h"

namespace lore {

namespace {

bool Agrees(const CalendarWorld& world, const char* text, const char* title) {
    return world.prompts.Ask(text, title) == PromptAnswer::Yes;
}

/// Takes events out of the file by `remove(events)`, and with them the reminders that `part(all)` gives. Both files
/// stand on the disk before the server hears of it and they take their places: a disk that is full changes nothing.
/// False unless all has gone.
template <typename Remove, typename Part>
bool RemoveFromFiles(const CalendarWorld& world, const char* progressText, Remove remove, Part part) {
    world.ShowProgress(progressText);
    EventList events;
    ReminderList all;
    bool done = LoadEvents(world, events) && LoadReminders(world, all);
    if (done) {
        // Whoever removes nothing has no reminders to report on.
        const Report report = remove(events) ? Report::Shown : Report::Silent;
        const LeavingReminders reminders = part(all);
        JointSave save(world);
        done = save.PrepareEvents(events) && (reminders.leaving.empty() || save.PrepareReminders(reminders.staying)) &&
               RemoveLeaving(world, reminders, report, [&] { return save.Commit(all); });
    }
    world.progress.Hide();
    if (done)
        world.TellAgent();
    return done;
}

/// The same for the events that `remove(events)` gives.
template <typename Remove>
bool RemoveAll(const CalendarWorld& world, const char* progressText, Remove remove) {
    EventList removed;
    return RemoveFromFiles(
        world, progressText,
        [&](EventList& events) {
            removed = remove(events);
            return !removed.empty();
        },
        [&](const ReminderList& all) { return RemindersLeavingWith(removed, all); });
}

}  // namespace

bool DeleteSingleEvent(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(world, "Do you wish to delete this event?", "Delete Event?") &&
           RemoveAll(world, "Deleting single event....", [&](EventList& events) {
               RemoveEvent(events, event.EventId);
               return EventList{event};
           });
}

bool DeleteEntireSeries(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(world, "Do you wish to delete the entire recurring series that this event belongs?",
                  "Delete Entire Series?") &&
           RemoveAll(world, "Deleting entire to event series....",
                     [&](EventList& events) { return RemoveSeries(events, event.SeriesId); });
}

bool DeleteFollowingEvents(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(
               world,
               "Do you wish to delete this and all following events in the recurring series that this event belongs?",
               "Deleting Events in Series?") &&
           RemoveAll(world, "Deleting this and all following events in series....",
                     [&](EventList& events) { return RemoveSeries(events, event.SeriesId, &event); });
}

bool DeleteEvent(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(world, "Do you wish to delete this event?", "Delete Event?") &&
           RemoveFromFiles(
               world, "Deleting Event....",
               [&](EventList& events) {
                   RemoveEvent(events, event.EventId);
                   return true;
               },
               [&](const ReminderList& all) { return RemindersLeavingWith(event, all); });
}

}  // namespace lore
