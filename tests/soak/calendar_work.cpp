#include <algorithm>

#include "calendar/event_changes.h"
#include "calendar/event_editor.h"
#include "calendar/event_reminders.h"
#include "calendar/month_view.h"
#include "soak/soak_world.h"

namespace lore {

namespace {

constexpr size_t kMostEvents = 200;
constexpr int64_t kMinute = 60, kDay = 24 * 60 * kMinute;

/// The events that the file holds beyond those of the model, by their starts.
std::map<int64_t, CTmEvent> NewEvents(Soak& soak) {
    EventList stored;
    soak.Require(LoadEvents(soak.Calendar(), stored), "the calendar");
    std::map<int64_t, CTmEvent> found;
    for (const CTmEvent& event : stored)
        if (!soak.events.contains(event.EventId))
            found.emplace(event.Start.Seconds(), event);
    return found;
}

void PutPopups(Soak& soak, EventEditor& editor, ModelEvent& wanted) {
    for (size_t count = soak.Below(3); count > 0; --count) {
        const auto minutes = static_cast<int32_t>(5 * (1 + soak.Below(20)));
        if (wanted.popups.size() >= kMostReminders || !wanted.popups.insert(minutes).second)
            continue;
        std::optional<CTmReminder> reminder = editor.NewReminder();
        if (!reminder) {  // the event has begun
            wanted.popups.erase(minutes);
            return;
        }
        reminder->PriorMinutes = minutes;
        reminder->SendTime = editor.Event().Start.PlusSeconds(-kMinute * minutes);
        editor.PutReminder(*reminder);
    }
}

bool MakeEvent(Soak& soak) {
    if (soak.events.size() >= kMostEvents)
        return false;
    const DateTime start = soak.Now()
                               .Midnight()
                               .PlusDays(static_cast<int64_t>(2 + soak.Below(200)))
                               .PlusSeconds(static_cast<int64_t>(soak.Below(143)) * 10 * kMinute);
    const DateTime end = start.PlusSeconds(static_cast<int64_t>(1 + soak.Below(200)) * 10 * kMinute);
    ModelEvent wanted{soak.Unique("Event "), soak.Chance(50) ? soak.AnyWords() : "",   "", start.Seconds(),
                      end.Seconds() + 59,    static_cast<int32_t>(1 + soak.Below(20)), {}};
    EventEditor editor = EventEditor::ForNewEvent(soak.Calendar(), std::pair(start.Midnight(), start.Midnight()));
    editor.SetLabel(wanted.label);
    editor.SetDescription(wanted.description);
    editor.SetBarColor(wanted.color);
    editor.SetAllDay(false);
    editor.PlaceAt(start, end);
    PutPopups(soak, editor, wanted);
    int64_t step = 0, count = 1;
    if (soak.Chance(40)) {
        const bool isWeekly = soak.Chance(40);
        const auto every = static_cast<int32_t>(1 + soak.Below(4));
        count = static_cast<int64_t>(2 + soak.Below(10));
        step = (isWeekly ? 7 : 1) * every * kDay;
        editor.SetRecurring(true);
        editor.ChooseTab(isWeekly ? kWeekly : kDaily);
        editor.SetPattern(isWeekly ? static_cast<size_t>(kWeeklyN) : static_cast<size_t>(kDailyN), every);
        editor.SetRecurrenceEnd(start.PlusSeconds(step * (count - 1)));
    }
    soak.Note("  " + wanted.label + start.Format(" %Y-%m-%d %H:%M, ") + std::to_string(count));
    soak.Require(editor.Save() == EventSave::Saved, "an event wasn't saved");
    const std::map<int64_t, CTmEvent> made = NewEvents(soak);
    soak.Require(static_cast<int64_t>(made.size()) == count, "number of new events: " + std::to_string(made.size()));
    for (const auto& [at, event] : made) {
        ModelEvent one = wanted;
        one.start += (at - wanted.start);
        one.end += (at - wanted.start);
        one.series = count > 1 ? made.begin()->second.SeriesId : "";
        soak.Require(count == 1 || (at - wanted.start) % step == 0, "day of a series");
        soak.events.emplace(event.EventId, one);
    }
    soak.CheckEvents();
    return true;
}

/// An event of the file.
CTmEvent Stored(Soak& soak, const std::string& id) {
    EventList stored;
    soak.Require(LoadEvents(soak.Calendar(), stored) && FindEventIndex(stored, id) >= 0, "an event isn't there");
    return stored[static_cast<size_t>(FindEventIndex(stored, id))];
}

std::vector<std::string> Reached(const Soak& soak, const std::string& id, SeriesReach reach) {
    const ModelEvent& event = soak.events.at(id);
    if (reach == SeriesReach::Cancel)
        return {};
    std::vector<std::string> ids{id};
    for (const auto& [other, one] : soak.events)
        if (other != id && !event.series.empty() && one.series == event.series && reach != SeriesReach::OnlyThis &&
            (reach == SeriesReach::EntireSeries || one.start > event.start))
            ids.push_back(other);
    return ids;
}

bool ChangeEvent(Soak& soak) {
    if (soak.events.empty())
        return false;
    const std::string id = soak.AnyOf(soak.events).first;
    ModelEvent wanted = soak.events.at(id);
    EventEditor editor = EventEditor::ForEvent(soak.Calendar(), Stored(soak, id));
    const bool isSeries = !wanted.series.empty();
    static constexpr SeriesReach reaches[] = {SeriesReach::EntireSeries, SeriesReach::AllFollowing,
                                              SeriesReach::OnlyThis, SeriesReach::Cancel};
    soak.question.answer = reaches[soak.Below(4)];
    wanted.label = soak.Unique("Changed ");
    editor.SetLabel(wanted.label);
    if (soak.Chance(50))
        editor.SetDescription(wanted.description = soak.AnyWords());
    if (!isSeries && soak.Chance(50)) {
        const auto days = static_cast<int64_t>(1 + soak.Below(30));
        editor.PlaceAt(editor.Event().Start.PlusDays(days), editor.Event().End.PlusDays(days));
        wanted.start += days * kDay;
        wanted.end += days * kDay;
    }
    const std::vector<std::string> reached = Reached(soak, id, isSeries ? soak.question.answer : SeriesReach::OnlyThis);
    soak.Note("  " + wanted.label + ", " + std::to_string(reached.size()) + " events");
    soak.Require(editor.Save() == (reached.empty() ? EventSave::Cancelled : EventSave::Saved), "a change of an event");
    // Others of the series take what was changed, and keep the rest.
    const bool isDescribed = wanted.description != soak.events.at(id).description;
    for (const std::string& one : reached) {
        ModelEvent& event = soak.events.at(one);
        event.label = wanted.label;
        if (isDescribed)
            event.description = wanted.description;
    }
    if (!reached.empty())
        soak.events.at(id) = wanted;
    soak.CheckEvents();
    return true;
}

bool DeleteEvents(Soak& soak) {
    if (soak.events.empty())
        return false;
    const std::string id = soak.AnyOf(soak.events).first;
    const CTmEvent event = Stored(soak, id);
    const ModelEvent& wanted = soak.events.at(id);
    soak.SayYes();
    bool isDone = false;
    SeriesReach reach = SeriesReach::OnlyThis;
    if (!IsSeriesMember(event)) {
        isDone = DeleteEvent(soak.Calendar(), event);
    } else if (soak.events.size() < kMostEvents / 2 && soak.Chance(50)) {
        isDone = DeleteSingleEvent(soak.Calendar(), event);
    } else if (soak.Chance(50)) {
        isDone = DeleteFollowingEvents(soak.Calendar(), event);
        reach = SeriesReach::AllFollowing;
    } else {
        isDone = DeleteEntireSeries(soak.Calendar(), event);
        reach = SeriesReach::EntireSeries;
    }
    soak.Note("  " + wanted.label);
    soak.Require(isDone, "an event wasn't deleted");
    for (const std::string& one : Reached(soak, id, reach))
        soak.events.erase(one);
    soak.CheckEvents();
    return true;
}

bool LookAtMonth(Soak& soak) {
    MonthView month(soak.Calendar());
    month.TurnMonths(static_cast<int>(soak.Below(9)));
    for (int cell = 0; cell < 35; cell += 5) {
        const int64_t first = month.Grid().DayOf(cell).Midnight().Seconds(), last = first + kDay - 1;
        const auto wanted = std::count_if(soak.events.begin(), soak.events.end(), [&](const auto& entry) {
            return entry.second.start <= last && entry.second.end >= first;
        });
        soak.Require(static_cast<int64_t>(month.EventsOn(cell).size()) == wanted,
                     "events of " + month.CellText(cell) + " instead of " + std::to_string(wanted));
    }
    return true;
}

}  // namespace

std::span<const SoakAction> CalendarActions() {
    static constexpr SoakAction actions[] = {{"make an event", 16, MakeEvent},
                                             {"change an event", 16, ChangeEvent},
                                             {"delete events", 14, DeleteEvents},
                                             {"look at a month", 8, LookAtMonth}};
    return actions;
}

}  // namespace lore
