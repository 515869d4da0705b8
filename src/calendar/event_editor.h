#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "calendar/event_changes.h"

namespace lore {

/// The event editor without its controls: the fields of one event with the rules that hold between them.
class EventEditor {
public:
    /// For a new event, from the first day to the last one, or for today. The world outlives the editor.
    static EventEditor ForNewEvent(const CalendarWorld& world,
                                   const std::optional<std::pair<DateTime, DateTime>>& days);
    /// For an event of the file; its reminders are read.
    static EventEditor ForEvent(const CalendarWorld& world, const CTmEvent& event);

    bool IsNew() const { return isNew_; }
    const char* Title() const { return isNew_ ? "Create Event" : "Edit Event"; }
    /// The fields as they stand.
    const CTmEvent& Event() const { return event_; }
    /// Whether anything is another than when the editor was opened.
    bool HasChanged() const;

    // Dates and times. A time is taken in steps of ten minutes: one minute more or less is a step, anything else is
    // rounded. Whole days keep their times. Then the end is held after the start: it stays where it stands as long as
    // it does.

    /// A series that isn't saved yet begins with the event, as far as the user hasn't given it days of its own.
    void ChangeStart(const DateTime& start);
    void ChangeEnd(const DateTime& end);
    /// Both at once and to the minute, as a script gives them. They are valid.
    void PlaceAt(const DateTime& start, const DateTime& end);
    void SetAllDay(bool allDay);
    bool IsAllDay() const { return event_.AllDay == 1; }

    void SetBarColor(int32_t color) { event_.BarColor = color; }
    void SetLabel(std::string label) { event_.Label = std::move(label); }
    void SetDescription(std::string description) { event_.Description = std::move(description); }

    /// Shows or hides the tabs. When they show for the first time, the series begins at the event's start.
    void SetRecurring(bool recurring);
    bool IsRecurring() const { return event_.Recurring == 1; }
    /// The tab in front.
    SeriesType Tab() const { return tab_; }
    void ChooseTab(SeriesType tab);
    /// A radio button, a box, or a place in a list of the tab's pattern.
    void SetPattern(size_t slot, int32_t value);
    /// One of the two forms of the tab in front.
    void ChooseForm(bool first);
    /// What is typed into a number field of the tab in front. Gives the text that the field holds then; an empty one
    /// counts as 1.
    std::string TypePattern(size_t slot, std::string_view typed);
    int32_t Pattern(size_t slot) const;
    /// The date pickers of the series change the day and keep the time of day.
    void SetRecurrenceStart(const DateTime& day);
    void SetRecurrenceEnd(const DateTime& day);
    /// "Repeats every day from 01/03/11 to 01/05/11". Empty if the event is no series, or its pattern has no words.
    std::string Summary() const;
    /// What a save would make of it: "Ends after 3 events, on 01/05/11", that no event falls on these days, or that the
    /// event moves without the others of its series. Empty if the event is no series.
    std::string Outcome() const;

    /// The rows of the reminder list; "No Reminders Set" where there is none.
    std::vector<std::string> ReminderLines() const;
    size_t Reminders() const { return event_.Reminders.size(); }
    /// A copy for the reminder editor, with the event's start and texts as they are now.
    CTmReminder Reminder(size_t row) const;
    /// A reminder for "Add Reminder", to be edited and put in. Nothing, told, if there are four, or the event has
    /// begun.
    std::optional<CTmReminder> NewReminder() const;
    /// Puts an edited reminder over the one of its id, or after the others.
    void PutReminder(const CTmReminder& reminder);
    void RemoveReminder(size_t row);

    /// Saves the event. Only after Refused and NotWritten the editor goes on.
    EventSave Save();

private:
    EventEditor(const CalendarWorld& world, CTmEvent event, bool isNew);
    LongList& Slots() { return event_.*kPatternLists[static_cast<size_t>(tab_)].list; }
    void DescribeEvent(CTmReminder& reminder) const;
    void MoveSeries(const DateTime& before);
    bool MovesAlone() const;
    void KeepOrder();
    void ApplyWholeDays();
    CTmEvent Finished() const;

    const CalendarWorld& world_;
    CTmEvent event_, old_;
    bool isNew_;
    SeriesType tab_ = kDaily;
    CTmEvent opened_;      // as a save would have had it at once
    bool hasEnd_ = false;  // the user has given the series its last day
};

}  // namespace lore
