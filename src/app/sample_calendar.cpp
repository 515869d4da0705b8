#include "app/sample_calendar.h"

#include <algorithm>
#include <array>

#include "app/sample_json.h"
#include "calendar/date_arithmetic.h"
#include "calendar/series.h"

namespace lore {
namespace {

constexpr int32_t kOtherTime = -1;  // a reminder that isn't counted from its event
constexpr int kDaysOfWeek = 7;
constexpr std::array<std::string_view, kDaysOfWeek> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                                 "Thursday", "Friday", "Saturday"};

class CalendarReader {
public:
    explicit CalendarReader(const ReadContext& context) : context_(context) {}

    void AddEvent(const SampleJson& json);
    void AddSeries(const SampleJson& json);
    void AddReminder(const SampleJson& json);
    SampleCalendar Take() { return std::move(calendar_); }

private:
    DateTime DayOf(const SampleJson& json) const { return context_.now.Midnight().PlusDays(NumberOf(json, "day")); }
    /// An event of that day, with its texts, not in a series.
    CTmEvent EventOn(const DateTime& day, const SampleJson& json) const;
    void AddPopups(const CTmEvent& event, const SampleJson& json);
    void AddPopup(CTmReminder reminder);

    const ReadContext& context_;
    SampleCalendar calendar_;
};

/// Seconds since midnight of "HH:MM".
int64_t TimeOf(const SampleJson& json, const char* key) {
    const std::string text = TextOf(json, key);
    return ParseInt(text) * kHour + ParseInt(text.substr(std::min<size_t>(3, text.size()))) * kMinute;
}

CTmEvent CalendarReader::EventOn(const DateTime& day, const SampleJson& json) const {
    CTmEvent event = NewEvent(context_);
    const bool timed = json.contains("from");
    const DateTime lastDay = day.PlusDays(NumberOf(json, "days", 1) - 1);
    event.AllDay = timed ? 0 : 1;
    event.Start = timed ? day.PlusSeconds(TimeOf(json, "from")) : day;
    event.End = lastDay.PlusSeconds(timed ? TimeOf(json, "to") + kMinute - 1 : kDay - 1);
    event.RecurrenceStart = event.RecurrenceEnd = event.Start;
    event.BarColor = NumberOf(json, "color", event.BarColor);
    event.Label = TextOf(json, "label");
    event.Description = TextOf(json, "text");
    return event;
}

void CalendarReader::AddEvent(const SampleJson& json) {
    calendar_.events.push_back(EventOn(DayOf(json), json));
    AddPopups(calendar_.events.back(), json);
}

void CalendarReader::AddSeries(const SampleJson& json) {
    const auto weekday = std::ranges::find(kWeekdays, TextOf(json, "weekday")) - kWeekdays.begin();
    if (weekday >= kDaysOfWeek)
        return;
    DateTime day = DayOf(json);
    day = day.PlusDays((weekday + 1 - day.DayOfWeek() + kDaysOfWeek) % kDaysOfWeek);
    CTmEvent event = EventOn(day, json);
    event.Recurring = 1;
    event.RecurrenceType = kWeekly;
    event.RecurrenceEnd = event.Start.PlusDays(int64_t{NumberOf(json, "weeks", 1) - 1} * kDaysOfWeek);
    event.WeeklyPattern = LongList(std::vector<int32_t>(kWeeklySlots, 0));
    event.WeeklyPattern.SetAt(kWeeklyN, 1);
    event.WeeklyPattern.SetAt(kWeeklySunday + weekday, 1);
    for (CTmEvent& one : ExpandSeries(event, *context_.guids).records) {
        AddPopups(one, json);
        calendar_.events.push_back(std::move(one));
    }
}

void CalendarReader::AddPopups(const CTmEvent& event, const SampleJson& json) {
    for (const SampleJson& minutes : ArrayOf(json, "remind")) {
        CTmReminder reminder = NewReminder(context_);
        reminder.EventStart = event.Start;
        SendBeforeStart(reminder, minutes.get<int32_t>());
        reminder.EventId = event.EventId;
        reminder.Message = reminder.EventLabel = event.Label;
        reminder.EventDescription = event.Description;
        AddPopup(std::move(reminder));
    }
}

void CalendarReader::AddReminder(const SampleJson& json) {
    CTmReminder reminder = NewReminder(context_);
    reminder.PriorMinutes = kOtherTime;
    reminder.EventStart = reminder.SendTime = reminder.ServerSendTime = DayOf(json).PlusSeconds(TimeOf(json, "at"));
    reminder.Message = TextOf(json, "message");
    AddPopup(std::move(reminder));
}

void CalendarReader::AddPopup(CTmReminder reminder) {
    if (reminder.SendTime.Seconds() > context_.now.Seconds() + kHour)
        calendar_.reminders.push_back(std::move(reminder));
}

}  // namespace

SampleCalendar ReadSampleCalendar(std::string_view text, const ReadContext& context) {
    const SampleJson json = ParseSampleJson(text);
    CalendarReader reader(context);
    for (const SampleJson& entry : ArrayOf(json, "events"))
        reader.AddEvent(entry);
    for (const SampleJson& entry : ArrayOf(json, "series"))
        reader.AddSeries(entry);
    for (const SampleJson& entry : ArrayOf(json, "reminders"))
        reader.AddReminder(entry);
    return reader.Take();
}

}  // namespace lore
