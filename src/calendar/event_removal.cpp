#include "calendar/event_changes.h"
#include "calendar/event_reminders.h"

namespace lore {

namespace {

bool Agrees(const CalendarWorld& world, const char* text, const char* title) {
    return world.prompts.Ask(text, title) == PromptAnswer::Yes;
}

/// Takes events out of the file by `remove(events)`, and then the reminders of what went by `removeReminders(all)`.
/// Where that fails both files get back what they held, so that it can be tried again. False unless all has gone.
template <typename Remove, typename RemoveReminders>
bool RemoveFromFiles(const CalendarWorld& world, const char* progressText, Remove remove,
                     RemoveReminders removeReminders) {
    world.ShowProgress(progressText);
    EventList events;
    ReminderList reminders;
    bool done = LoadEvents(world, events) && LoadReminders(world, reminders);
    if (done) {
        const EventList before = events;
        remove(events);
        done = SaveEvents(world, events) && removeReminders(reminders);
        if (!done)
            PutBack(world, before, reminders);
    }
    world.progress.Hide();
    if (done)
        world.TellAgent();
    return done;
}

/// The same for events that `remove(events)` gives, with a report of their reminders.
template <typename Remove>
bool RemoveWithReminders(const CalendarWorld& world, const char* progressText, Remove remove) {
    EventList removed;
    return RemoveFromFiles(
        world, progressText, [&](EventList& events) { removed = remove(events); },
        [&](const ReminderList& all) {
            return removed.empty() || RemoveRemindersOfEvents(world, removed, all, Report::Shown);
        });
}

}  // namespace

bool DeleteSingleEvent(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(world, "Do you wish to delete this event?", "Delete Event?") &&
           RemoveWithReminders(world, "Deleting single event....", [&](EventList& events) {
               RemoveEvent(events, event.EventId);
               return EventList{event};
           });
}

bool DeleteEntireSeries(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(world, "Do you wish to delete the entire recurring series that this event belongs?",
                  "Delete Entire Series?") &&
           RemoveWithReminders(world, "Deleting entire to event series....",
                               [&](EventList& events) { return RemoveSeries(events, event.SeriesId); });
}

bool DeleteFollowingEvents(const CalendarWorld& world, const CTmEvent& event) {
    return Agrees(
               world,
               "Do you wish to delete this and all following events in the recurring series that this event belongs?",
               "Deleting Events in Series?") &&
           RemoveWithReminders(world, "Deleting this and all following events in series....",
                               [&](EventList& events) { return RemoveSeries(events, event.SeriesId, &event); });
}

bool DeleteEvent(const CalendarWorld& world, CTmEvent event) {
    return Agrees(world, "Do you wish to delete this event?", "Delete Event?") &&
           RemoveFromFiles(
               world, "Deleting Event....", [&](EventList& events) { RemoveEvent(events, event.EventId); },
               [&](const ReminderList& all) { return RemoveEventReminders(world, event, all, Report::Shown); });
}

}  // namespace lore
