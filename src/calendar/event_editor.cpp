#include "calendar/event_editor.h"

#include <string>
#include <utility>

#include "base/record_file.h"
#include "base/text.h"
#include "calendar/date_arithmetic.h"
#include "calendar/event_reminders.h"
#include "calendar/reminder_text.h"
#include "calendar/series.h"
#include "calendar/series_rules.h"
#include "calendar/series_text.h"
#include "calendar/ten_minutes.h"

namespace lore {

namespace {

DateTime AtClock(const DateTime& day, int hour, int minute, int second) {
    return day.Midnight().PlusSeconds(hour * kHour + minute * kMinute + second);
}

bool IsLastSecond(const DateTime& time) {
    return time.Hour() == 23 && time.Minute() == 59 && time.Second() == 59;
}

/// False, told, if a text is longer than a record holds.
bool MayHoldTexts(const CTmEvent& event, Prompts& prompts) {
    const std::pair<const char*, const std::string*> texts[] = {{"title", &event.Label},
                                                                {"description", &event.Description}};
    for (const auto& [name, text] : texts) {
        if (text->size() <= kMaxStringLength)
            continue;
        prompts.Message("The " + std::string(name) + " of this event takes " + std::to_string(text->size()) +
                            " bytes; an event can hold " + std::to_string(kMaxStringLength) +
                            ".\n\nPlease shorten it. Nothing was saved.",
                        "Event Too Large", PromptIcon::Warning);
        return false;
    }
    return true;
}

}  // namespace

EventEditor::EventEditor(const CalendarWorld& world, CTmEvent event, bool isNew)
    : world_(world), event_(std::move(event)), old_(event_), isNew_(isNew) {
    if (event_.RecurrenceType >= 0 && event_.RecurrenceType < kSeriesTypes)
        tab_ = static_cast<SeriesType>(event_.RecurrenceType);
    for (const lore::PatternList& pattern : kPatternLists) {
        while ((event_.*pattern.list).Count() < pattern.slotCount)
            (event_.*pattern.list).AddTail(-1);
    }
    opened_ = Finished();
}

EventEditor EventEditor::ForNewEvent(const CalendarWorld& world,
                                     const std::optional<std::pair<DateTime, DateTime>>& days) {
    return EventEditor(world, EventForDays(world, days), true);
}

EventEditor EventEditor::ForEvent(const CalendarWorld& world, const CTmEvent& event) {
    CTmEvent withReminders = event;
    withReminders.Reminders = StoredReminders(world, event.EventId);
    return EventEditor(world, withReminders, false);
}

bool EventEditor::HasChanged() const {
    const CTmEvent event = Finished();
    return EventsDiffer(event, opened_) || EventInfoDiffers(event, opened_) || event.AllDay != opened_.AllDay ||
           !(event.Start == opened_.Start) || !(event.End == opened_.End);
}

void EventEditor::ChangeStart(const DateTime& start) {
    if (!start.IsValid())
        return;
    const DateTime before = event_.Start;
    event_.Start = IsAllDay() ? start.Midnight() : SteppedTime(event_.Start, start);
    KeepOrder();
    MoveSeries(before);
}

void EventEditor::MoveSeries(const DateTime& before) {
    if (old_.Recurring == 1)
        return;
    MovePatternDefaults(event_, before);
    if (!IsRecurring() || !IsSameDay(event_.RecurrenceStart, before))
        return;
    const int64_t days = SpanBetween(before.Midnight(), event_.Start.Midnight()).WholeDays();
    const DateTime last = event_.RecurrenceEnd.PlusDays(hasEnd_ ? 0 : days);
    event_.RecurrenceStart = event_.Start;
    if (const DateTime end = AtTimeOf(last, event_.Start); end.IsValid())
        event_.RecurrenceEnd = end;
    KeepEndAfterStart(event_);
    ApplyMinimumLength(event_, tab_);
}

void EventEditor::ChangeEnd(const DateTime& end) {
    if (!end.IsValid())
        return;
    event_.End = IsAllDay() ? end : SteppedTime(event_.End, end);
    KeepOrder();
}

void EventEditor::PlaceAt(const DateTime& start, const DateTime& end) {
    event_.Start = start;
    event_.End = end;
    KeepOrder();
}

void EventEditor::KeepOrder() {
    const DateTime anHourLater = event_.Start.PlusSeconds(kHour);
    if (!IsAllDay() && IsSameDay(event_.Start, event_.End) && event_.End.IsEarlierOrEqual(event_.Start))
        event_.End = IsSameDay(event_.Start, anHourLater) ? anHourLater : AtClock(event_.Start, 23, 50, 0);
    if (IsLater(event_.Start, event_.End))
        event_.End = anHourLater.IsValid() ? anHourLater : AtClock(event_.Start, 23, 59, 0);
    if (IsAllDay())
        ApplyWholeDays();
}

void EventEditor::ApplyWholeDays() {
    event_.Start = event_.Start.Midnight();
    event_.End = AtClock(event_.End, 23, 59, 59);
}

void EventEditor::SetAllDay(bool allDay) {
    if (allDay == IsAllDay())
        return;
    event_.AllDay = allDay ? 1 : 0;
    if (allDay) {
        ApplyWholeDays();
    } else if (IsLastSecond(event_.End)) {
        const int hour = event_.Start.Hour() + 1;
        event_.End = hour < 24 ? AtClock(event_.End, hour, 0, 0) : AtClock(event_.End, 23, 50, 0);
    }
    KeepOrder();
}

void EventEditor::SetRecurring(bool recurring) {
    if (recurring == IsRecurring())
        return;
    event_.Recurring = recurring ? 1 : 0;
    if (!recurring)
        return;
    if (old_.Recurring != 1) {
        event_.RecurrenceStart = event_.RecurrenceEnd = event_.Start;
        hasEnd_ = false;
    }
    ChooseTab(tab_);
}

void EventEditor::ChooseTab(SeriesType tab) {
    tab_ = tab;
    event_.RecurrenceType = tab;
    FillPatternDefaults(event_, tab);
    ApplyMinimumLength(event_, tab);
}

void EventEditor::SetPattern(size_t slot, int32_t value) {
    Slots().SetAt(slot, value);
    ApplyMinimumLength(event_, tab_);
}

void EventEditor::ChooseForm(bool first) {
    Slots().SetAt(0, first ? 1 : 0);
    SetPattern(1, first ? 0 : 1);
}

std::string EventEditor::TypePattern(size_t slot, std::string_view typed) {
    std::string held = CorrectPatternInput(typed);
    if (held.empty())
        Slots().SetAt(slot, 1);  // until another number is typed; the end of the series doesn't move for it
    else
        SetPattern(slot, ParseInt(held));
    return held;
}

int32_t EventEditor::Pattern(size_t slot) const {
    return PatternAt(event_.*kPatternLists[static_cast<size_t>(tab_)].list, slot);
}

void EventEditor::SetRecurrenceStart(const DateTime& day) {
    if (const DateTime start = AtTimeOf(day, event_.RecurrenceStart); start.IsValid())
        event_.RecurrenceStart = start;
    KeepEndAfterStart(event_);
}

void EventEditor::SetRecurrenceEnd(const DateTime& day) {
    if (const DateTime end = AtTimeOf(day, event_.RecurrenceEnd); end.IsValid())
        event_.RecurrenceEnd = end;
    hasEnd_ = true;
    KeepEndAfterStart(event_);
}

std::string EventEditor::Summary() const {
    return IsRecurring() ? SeriesSummary(event_) : "";
}

bool EventEditor::MovesAlone() const {
    const CTmEvent event = Finished();
    return IsSeriesMember(old_) && event.Start != opened_.Start && !EventsDiffer(event, old_);
}

std::string EventEditor::Outcome() const {
    if (!IsRecurring())
        return "";
    if (MovesAlone())
        return "Only this event moves, the others of its series stay where they are";
    CTmEvent event = event_;
    KeepLastDay(event);
    const auto [dates, isCut] = SeriesDates(event);
    if (dates.empty())
        return "No event falls on these days";
    const std::string count = std::to_string(dates.size()) + (dates.size() == 1 ? " event" : " events") +
                              (isCut ? " (a series can't have more)" : "");
    return "Ends after " + count + ", on " + dates.back().start.Format("%m/%d/%y");
}

std::vector<std::string> EventEditor::ReminderLines() const {
    if (event_.Reminders.empty())
        return {"No Reminders Set"};
    std::vector<std::string> lines;
    for (CTmReminder reminder : event_.Reminders) {
        FollowStart(reminder, event_.Start);
        lines.push_back(ReminderLine(reminder, world_.clock.Now()));
    }
    return lines;
}

std::optional<CTmReminder> EventEditor::NewReminder() const {
    if (event_.Reminders.size() >= kMostReminders) {
        world_.prompts.Message("Only 4 Reminders Per Event", "Only 4 Reminders", PromptIcon::Information);
        return std::nullopt;
    }
    if (!IsLater(event_.Start, world_.clock.Now())) {
        world_.prompts.Message("Event has already started or occurred.", "Event Started", PromptIcon::Information);
        return std::nullopt;
    }
    CTmReminder reminder = lore::NewReminder(world_.Context());
    reminder.EventStart = reminder.SendTime = reminder.ServerSendTime = event_.Start;
    DescribeEvent(reminder);
    return reminder;
}

void EventEditor::DescribeEvent(CTmReminder& reminder) const {
    reminder.EventLabel = event_.Label;
    reminder.EventDescription = event_.Description;
    reminder.EventId = event_.EventId;
    if (reminder.PriorMinutes < 0)
        reminder.EventStart = event_.Start.PlusSeconds(-event_.Start.Second());  // the others follow with their time
}

CTmReminder EventEditor::Reminder(size_t row) const {
    CTmReminder reminder = event_.Reminders[row];
    FollowStart(reminder, event_.Start);
    DescribeEvent(reminder);
    return reminder;
}

void EventEditor::PutReminder(const CTmReminder& reminder) {
    if (!ReplaceReminder(event_.Reminders, reminder))
        event_.Reminders.push_back(reminder);
}

void EventEditor::RemoveReminder(size_t row) {
    if (row < event_.Reminders.size())
        event_.Reminders.erase(event_.Reminders.begin() + static_cast<std::ptrdiff_t>(row));
}

CTmEvent EventEditor::Finished() const {
    CTmEvent event = event_;
    event.Start = event.Start.PlusSeconds(-event.Start.Second());
    event.End = event.End.PlusSeconds(59 - event.End.Second());
    if (IsRecurring())
        event.RecurrenceType = tab_;
    ResetRecurrence(event, IsRecurring() ? tab_ : kNoSeries);
    // Title and start may have been changed after its reminders. Those that are stored follow with the save, since what
    // they say of the event is no change of theirs.
    for (CTmReminder& reminder : event.Reminders) {
        if (std::ranges::find(old_.Reminders, reminder.ReminderId, &CTmReminder::ReminderId) == old_.Reminders.end())
            DescribeEvent(reminder);
    }
    return event;
}

EventSave EventEditor::Save() {
    if (!MayHoldTexts(event_, world_.prompts))
        return EventSave::Refused;
    return isNew_ ? CreateEvent(world_, Finished()) : EditEvent(world_, Finished(), old_);
}

}  // namespace lore
