#include "calendar/event_changes.h"
#include "calendar/event_reminders.h"

namespace lore {

namespace {

bool Agrees(const CalendarWorld& world, const char* text, const char* title) {
    return world.prompts.Ask(text, title) == PromptAnswer::Yes;
}

/// Takes events out of the file by `remove(events)`, which gives those that it took. Nothing if the file isn't written.
template <typename Remove>
std::optional<EventList> RemoveFromFile(const CalendarWorld& world, const char* progressText, Remove remove) {
    world.ShowProgress(progressText);
    EventList events;
    std::optional<EventList> removed;
    if (LoadEvents(world, events)) {
        removed = remove(events);
        if (!SaveEvents(world, events))
            removed.reset();
    }
    if (!removed)
        world.progress.Hide();
    return removed;
}

/// The same, and then the reminders of what went, with their report.
template <typename Remove>
bool RemoveWithReminders(const CalendarWorld& world, const char* progressText, Remove remove) {
    const std::optional<EventList> removed = RemoveFromFile(world, progressText, remove);
    if (!removed)
        return false;
    if (!removed->empty())
        RemoveRemindersOfEvents(world, *removed, Report::Shown);
    world.progress.Hide();
    world.TellAgent();
    return true;
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
    if (!Agrees(world, "Do you wish to delete this event?", "Delete Event?"))
        return false;
    const std::optional<EventList> removed = RemoveFromFile(world, "Deleting Event....", [&](EventList& events) {
        RemoveEvent(events, event.EventId);
        return EventList{event};
    });
    if (!removed)
        return false;
    RemoveEventReminders(world, event, Report::Shown);
    world.progress.Hide();
    world.TellAgent();
    return true;
}

}  // namespace lore
