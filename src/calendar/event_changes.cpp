#include "calendar/event_changes.h"

#include "calendar/event_reminders.h"
#include "calendar/series.h"
#include "calendar/series_walk.h"

namespace lore {

namespace {

constexpr char kApplying[] = "Applying changes to event series....";
constexpr int kStandBy = 120;  // milliseconds

/// A short pause in which the screen repaints.
void StandBy(const CalendarWorld& world) {
    world.progress.ShowStandBy("Saving Event....");
    world.wait(kStandBy);
    world.progress.HideStandBy();
}

void TellCutSeries(const CalendarWorld& world, const CTmEvent& last) {
    world.progress.Hide();
    world.prompts.Message("A series can't have more than " + std::to_string(kMostOccurrences) +
                              " events.\n\nThis one is made up to " + last.Start.Format("%m/%d/%Y") +
                              "; to go on, make another series that starts after that day.",
                          "Series Too Long", PromptIcon::Warning);
}

/// The records of a new series, each with reminders of its own. Empty, told, if no date fits.
ExpandedSeries Expand(const CalendarWorld& world, CTmEvent& event) {
    ClearServerIds(event.Reminders);
    KeepLastDay(event);
    ExpandedSeries series = ExpandSeries(event, world.guids);
    EventList& records = series.records;
    for (CTmEvent& record : records)
        CopyReminders(event, record, world.guids);
    if (records.empty()) {
        world.progress.Hide();
        world.prompts.Message("No event falls on these days from " + event.RecurrenceStart.Format("%m/%d/%Y") + " to " +
                                  event.RecurrenceEnd.Format("%m/%d/%Y") +
                                  ".\n\nPlease choose other days, or a later end for the series.",
                              "No Events in Series", PromptIcon::Warning);
    }
    return series;
}

ReminderList RemindersOfAll(const EventList& events) {
    ReminderList all;
    for (const CTmEvent& event : events)
        AddReminders(all, event.Reminders);
    return all;
}

/// Writes the events with the records of a new series at their end, and tells if it was cut. Its reminders are there
/// before it, those of the events that it replaces go after it: nothing is missing at any time.
EventSave PutSeries(const CalendarWorld& world, EventList&& events, const ExpandedSeries& series,
                    const EventList& replaced) {
    const EventList& records = series.records;
    CreateSeriesReminders(world, RemindersOfAll(records));
    events.insert(events.end(), records.begin(), records.end());
    if (!SaveEventsWithProgress(world, events, records.size())) {
        RemoveRemindersOfEvents(world, records, Report::Silent);
        return EventSave::NotWritten;
    }
    if (!replaced.empty())
        RemoveRemindersOfEvents(world, replaced, Report::Silent);
    if (series.isCut)
        TellCutSeries(world, records.back());
    return EventSave::Saved;
}

/// Saves the reminders of an event, at the spans before its start where it has moved.
void SaveOwnReminders(const CalendarWorld& world, CTmEvent& event, Report report) {
    for (CTmReminder& reminder : event.Reminders)
        FollowStart(reminder, event.Start);
    UpdateEventReminders(world, event, report);
}

/// Saves the reminders of one event, then the event. `old` are the reminders to go back to if that fails.
EventSave SaveAlone(const CalendarWorld& world, CTmEvent event, const ReminderList& old) {
    SaveOwnReminders(world, event, Report::Shown);
    if (MergeEvents(world, {event}))
        return EventSave::Saved;
    TakeBackEventReminders(world, event, old);
    return EventSave::NotWritten;
}

/// Whether a series comes from an event that no file holds yet, or from one of the file, which gives way to its
/// records.
enum class SeriesFrom { NewEvent, StoredEvent };

EventSave BecomeSeries(const CalendarWorld& world, CTmEvent event, SeriesFrom from) {
    const bool isNew = from == SeriesFrom::NewEvent;
    EventList events;
    if (!LoadEvents(world, events))
        return EventSave::NotWritten;
    if (!isNew)
        world.ShowProgress("Setting up Recurring Events....");
    const ExpandedSeries series = Expand(world, event);
    if (series.records.empty())
        return EventSave::Refused;
    RemoveEvent(events, event.EventId);
    if (!isNew)
        world.progress.Hide();
    return PutSeries(world, std::move(events), series, isNew ? EventList() : EventList{event});
}

/// The event from which on a change reaches its series; null where it reaches all of it.
const CTmEvent* FirstReached(const CTmEvent& event, SeriesReach reach) {
    return reach == SeriesReach::AllFollowing ? &event : nullptr;
}

/// Replaces a series, or what of it starts at or after the event.
EventSave ReplaceSeries(const CalendarWorld& world, CTmEvent event, SeriesReach reach) {
    EventList events;
    if (!LoadEvents(world, events))
        return EventSave::NotWritten;
    world.ShowProgress(kApplying);
    if (reach == SeriesReach::AllFollowing)
        event.RecurrenceStart = event.Start;
    const ExpandedSeries series = Expand(world, event);
    if (series.records.empty())
        return EventSave::Refused;
    const EventList removed = RemoveSeries(events, event.SeriesId, FirstReached(event, reach));
    return PutSeries(world, std::move(events), series, removed);
}

/// The events of a change of information; the event itself is among them as it was edited.
EventList Reached(const EventList& events, const CTmEvent& event, SeriesReach reach) {
    EventList series = SelectSeries(events, event.SeriesId, FirstReached(event, reach));
    ReplaceEvent(series, event);
    return series;
}

EventSave WalkSeries(const CalendarWorld& world, const CTmEvent& event, const CTmEvent& old, SeriesReach reach) {
    EventList events;
    if (!LoadEvents(world, events))
        return EventSave::NotWritten;
    world.ShowProgress(kApplying);
    EventList series = Reached(events, event, reach);
    SeriesWalk walk(world, event, old);
    if (!walk.Run(series))
        return EventSave::NotWritten;
    world.ShowProgress("Finalizing changes to event series....");
    ReplaceEvents(events, series);
    const bool saved = SaveEvents(world, events);
    world.progress.Hide();
    if (!saved) {
        walk.TakeBack();
        return EventSave::NotWritten;
    }
    if (event.Start != old.Start) {
        CTmEvent moved = event;
        moved.Reminders = StoredReminders(world, event.EventId);
        SaveOwnReminders(world, moved, Report::Silent);
    }
    return EventSave::Saved;
}

/// The change reaches as far as the user says. `apply(reach)` carries it over to others.
template <typename Apply>
EventSave Distribute(const CalendarWorld& world, const CTmEvent& event, const CTmEvent& old, Apply apply) {
    const SeriesReach reach = world.question.Ask(ModifyEventMode::Modify);
    StandBy(world);
    switch (reach) {
        case SeriesReach::EntireSeries:
        case SeriesReach::AllFollowing:
            return apply(reach);
        case SeriesReach::OnlyThis:
            return SaveAlone(world, event, old.Reminders);
        case SeriesReach::Cancel:
            break;
    }
    MergeEvents(world, {old});
    return EventSave::Cancelled;
}

EventSave Save(const CalendarWorld& world, const CTmEvent& event, const CTmEvent& old) {
    if (event.Recurring != 1)
        return SaveAlone(world, event, old.Reminders);
    if (old.Recurring != 1 || old.SeriesId.empty())
        return BecomeSeries(world, event, SeriesFrom::StoredEvent);
    if (EventsDiffer(event, old))
        return Distribute(world, event, old, [&](SeriesReach reach) { return ReplaceSeries(world, event, reach); });
    if (EventInfoDiffers(event, old))
        return Distribute(world, event, old, [&](SeriesReach reach) { return WalkSeries(world, event, old, reach); });
    return SaveAlone(world, event, old.Reminders);
}

}  // namespace

CTmEvent EventForDays(const CalendarWorld& world, const std::optional<std::pair<DateTime, DateTime>>& days) {
    CTmEvent event = NewEvent(world.Context());
    const DateTime now = world.clock.Now();
    event.Start = days ? days->first : now;
    event.Start = event.Start.Midnight();
    event.End = (days ? days->second : now).Midnight().PlusDays(1).PlusSeconds(-1);
    event.RecurrenceStart = event.RecurrenceEnd = event.Start;
    return event;
}

EventSave CreateEvent(const CalendarWorld& world, const CTmEvent& event) {
    StandBy(world);
    const EventSave result =
        event.Recurring == 1 ? BecomeSeries(world, event, SeriesFrom::NewEvent) : SaveAlone(world, event, {});
    world.TellAgent();
    return result;
}

EventSave EditEvent(const CalendarWorld& world, const CTmEvent& event, CTmEvent old) {
    StandBy(world);
    old.Reminders = StoredReminders(world, event.EventId);
    const EventSave result = Save(world, event, old);
    world.TellAgent();
    return result;
}

}  // namespace lore
