#include <algorithm>
#include <map>
#include <random>

#include "calendar/calendar_fixture.h"
#include "calendar/date_arithmetic.h"
#include "calendar/event_changes.h"

namespace lore {
namespace {

/// One event as a plain person would write it down. Members of a series share a number.
struct PlainEvent {
    DateTime start, end;
    std::string label, description;
    int color = 1;
    int series = 0;
    int every = 0;            ///< days of the rhythm
    DateTime first, last;     ///< bounds of the series
    std::vector<int> popups;  ///< minutes before the start, in the order in which they were made

    bool operator==(const PlainEvent&) const = default;
};

/// The calendar as a list of plain events, changed by what the words of each command say.
class PlainCalendar {
public:
    int Add(const PlainEvent& event) {
        events[++lastId_] = event;
        return lastId_;
    }
    /// The dates of a rhythm, one after the other.
    void AddSeries(PlainEvent event) {
        event.series = ++lastSeries_;
        const int64_t length = event.end.Seconds() - event.start.Seconds();
        for (DateTime date = event.first; date.IsEarlierOrEqual(event.last); date = date.PlusDays(event.every)) {
            event.start = AtHour(date, event.start.Hour(), event.start.Minute(), 0);
            event.end = event.start.PlusSeconds(length);
            Add(event);
        }
    }
    bool HasDates(const PlainEvent& event) const { return event.first.IsEarlierOrEqual(event.last); }
    /// Takes out the series from a moment on; the rest ends on the day before.
    void Cut(int series, int id, const DateTime& from) {
        std::erase_if(events, [&](const auto& entry) {
            return entry.first == id || (entry.second.series == series && from.IsEarlierOrEqual(entry.second.start));
        });
        for (auto& [other, event] : events) {
            if (event.series == series)
                event.last = from.Midnight().PlusDays(-1);
        }
    }
    void RemoveSeries(int series) {
        std::erase_if(events, [&](const auto& entry) { return entry.second.series == series; });
    }

    std::map<int, PlainEvent> events;

private:
    int lastId_ = 0, lastSeries_ = 0;
};

/// A year of random changes, to the calendar and to the plain list at once.
class CalendarModel : public CalendarTest {
protected:
    static constexpr SeriesReach kReaches[] = {SeriesReach::EntireSeries, SeriesReach::AllFollowing,
                                               SeriesReach::OnlyThis, SeriesReach::Cancel};

    int Upto(int most) { return std::uniform_int_distribution<int>(0, most)(random); }

    PlainEvent RandomEvent() {
        PlainEvent event;
        event.start = clock.now.Midnight().PlusDays(2 + Upto(60)).PlusSeconds(3600 * Upto(20) + 600 * Upto(5));
        event.end = event.start.PlusSeconds(600 * (1 + Upto(12)) + 59);
        event.label = "Label " + std::to_string(++count);
        event.color = 1 + Upto(19);
        event.first = event.last = event.start;
        for (int i = Upto(2); i > 0; --i)
            event.popups.push_back(10 * Upto(6));
        if (Upto(2) == 0) {
            event.every = 1 + Upto(6);
            event.last = event.first.PlusDays(Upto(20));
        }
        return event;
    }

    CTmEvent Built(const PlainEvent& plain, const std::string& id) {
        CTmEvent event = Event(id, "", plain.start, plain.end);
        event.AllDay = 0;
        event.Label = plain.label;
        event.Description = plain.description;
        event.BarColor = plain.color;
        for (const int minutes : plain.popups)
            event.Reminders.push_back(ReminderFor(event, ReminderType::Popup, minutes));
        SetRhythm(event, plain);
        return event;
    }
    static void SetRhythm(CTmEvent& event, const PlainEvent& plain) {
        event.Recurring = plain.every > 0 ? 1 : 0;
        event.RecurrenceType = plain.every > 0 ? kDaily : kNoSeries;
        event.DailyPattern = plain.every > 0 ? LongList{1, 0, plain.every} : UnsetPattern(kDailySlots);
        event.RecurrenceStart = plain.first;
        event.RecurrenceEnd = plain.last;
    }

    void Create() {
        const PlainEvent plain = RandomEvent();
        ASSERT_EQ(CreateEvent(world, Built(plain, guids.NewGuid())), EventSave::Saved);
        plain.every > 0 ? model.AddSeries(plain) : void(model.Add(plain));
    }

    /// An event of the file, and the number of its twin in the plain list. One that looks like another isn't chosen.
    std::pair<CTmEvent, int> Chosen() {
        const EventList events = Stored();
        for (int tries = 0;; ++tries) {
            const CTmEvent& event = events[static_cast<size_t>(Upto(static_cast<int>(events.size()) - 1))];
            std::vector<int> twins;
            for (const auto& [id, plain] : model.events) {
                if (LineOf(plain) == LineOf(event))
                    twins.push_back(id);
            }
            EXPECT_FALSE(twins.empty());
            if (twins.size() <= 1 || tries > 1000)
                return {event, twins.empty() ? 0 : twins[0]};
        }
    }

    /// Seconds by which an event moves, to either side; no two members meet.
    int64_t RandomShift() { return 3600 * (20 - Upto(40)) + 60 * (1 + ++count % 59); }

    /// Description, colour or popups; now and then the event moves in the same edit.
    void EditTexts() {
        auto [event, id] = Chosen();
        const CTmEvent old = event;
        PlainEvent changed = model.events[id];
        const PlainEvent before = changed;
        if (const bool newColor = Upto(1) == 1; newColor)
            changed.color = changed.color % 20 + 1;
        else
            changed.description = "Words " + std::to_string(++count);
        const bool newPopup = changed.popups.size() < 4 && Upto(1) == 1;
        if (newPopup)
            changed.popups.push_back(1000 + ++count);
        const int64_t shift = Upto(2) == 0 ? RandomShift() : 0;
        event.Start = changed.start = before.start.PlusSeconds(shift);
        event.End = changed.end = before.end.PlusSeconds(shift);
        event.BarColor = changed.color;
        event.Description = changed.description;
        if (newPopup)
            event.Reminders.push_back(ReminderFor(event, ReminderType::Popup, changed.popups.back()));
        question.answer = kReaches[Upto(3)];
        const EventSave result = EditEvent(world, event, old);
        const bool isMember = before.every > 0;
        const SeriesReach reach = isMember ? question.answer : SeriesReach::OnlyThis;
        EXPECT_EQ(result, reach == SeriesReach::Cancel ? EventSave::Cancelled : EventSave::Saved);
        for (auto& [other, plain] : model.events) {
            const bool follows = plain.series == before.series && !plain.start.IsEarlierOrEqual(changed.start);
            const bool reached = reach == SeriesReach::EntireSeries ? plain.series == before.series
                                                                    : reach == SeriesReach::AllFollowing && follows;
            if (!(other == id ? reach != SeriesReach::Cancel : reached))
                continue;
            if (other == id) {
                plain.start = changed.start;
                plain.end = changed.end;
            }
            if (changed.color != before.color)
                plain.color = changed.color;
            if (changed.description != before.description)
                plain.description = changed.description;
            if (newPopup)
                ReplacePopups(plain, changed, reach);
        }
    }
    /// Over a series, popups become those of the event that was edited: what isn't among them goes.
    static void ReplacePopups(PlainEvent& plain, const PlainEvent& changed, SeriesReach reach) {
        if (reach == SeriesReach::OnlyThis) {
            plain.popups = changed.popups;
            return;
        }
        const auto has = [](const std::vector<int>& list, int minutes) {
            return std::find(list.begin(), list.end(), minutes) != list.end();
        };
        std::vector<int> popups;
        std::copy_if(plain.popups.begin(), plain.popups.end(), std::back_inserter(popups),
                     [&](int minutes) { return has(changed.popups, minutes); });
        std::copy_if(changed.popups.begin(), changed.popups.end(), std::back_inserter(popups),
                     [&](int minutes) { return !has(plain.popups, minutes); });
        plain.popups = popups;
    }

    /// Another rhythm, or another end of the series.
    void EditSchedule() {
        auto [event, id] = Chosen();
        const CTmEvent old = event;
        PlainEvent changed = model.events[id];
        const PlainEvent before = changed;
        changed.every = changed.every % 6 + 1;
        if (before.every == 0)
            changed.first = changed.start;
        changed.last = changed.start.PlusDays(Upto(14) - (before.every > 0 ? 2 : 0));
        SetRhythm(event, changed);
        question.answer = kReaches[Upto(3)];
        const EventSave result = EditEvent(world, event, old);
        const SeriesReach reach = before.every > 0 ? question.answer : SeriesReach::EntireSeries;
        if (reach == SeriesReach::AllFollowing)
            changed.first = changed.start;
        // The last day is meant whole, though the event that was edited may lie earlier in its day than the series.
        const DateTime last = AtTimeOf(changed.last, changed.first);
        if (reach != SeriesReach::OnlyThis && changed.last.IsEarlierOrEqual(last))
            changed.last = last;
        if (reach == SeriesReach::Cancel) {
            EXPECT_EQ(result, EventSave::Cancelled);
        } else if (reach == SeriesReach::OnlyThis) {
            EXPECT_EQ(result, EventSave::Saved);
            model.events[id] = changed;
        } else if (!model.HasDates(changed)) {
            EXPECT_EQ(result, EventSave::Refused);
        } else {
            EXPECT_EQ(result, EventSave::Saved);
            if (before.every == 0)
                model.events.erase(id);
            else if (reach == SeriesReach::EntireSeries)
                model.RemoveSeries(before.series);
            else
                model.Cut(before.series, id, changed.start);
            model.AddSeries(changed);
        }
    }

    /// The event alone, by up to a day to either side; its popups come along.
    void Move() {
        auto [event, id] = Chosen();
        const CTmEvent old = event;
        const int64_t seconds = RandomShift();
        event.Start = event.Start.PlusSeconds(seconds);
        event.End = event.End.PlusSeconds(seconds);
        EXPECT_EQ(EditEvent(world, event, old), EventSave::Saved);
        model.events[id].start = event.Start;
        model.events[id].end = event.End;
    }

    void Delete() {
        auto [event, id] = Chosen();
        const PlainEvent before = model.events[id];
        prompts.answers = {PromptAnswer::Yes};
        if (before.every == 0) {
            EXPECT_TRUE(DeleteEvent(world, event));
            model.events.erase(id);
            return;
        }
        switch (Upto(2)) {
            case 0:
                EXPECT_TRUE(DeleteSingleEvent(world, event));
                model.events.erase(id);
                break;
            case 1:
                EXPECT_TRUE(DeleteFollowingEvents(world, event));
                model.Cut(before.series, id, before.start);
                break;
            default:
                EXPECT_TRUE(DeleteEntireSeries(world, event));
                model.RemoveSeries(before.series);
        }
    }

    /// The lines of both, sorted: what happens when, with which popups.
    void Compare() {
        std::vector<std::string> plain, stored;
        for (const auto& [id, event] : model.events)
            plain.push_back(LineOf(event));
        size_t reminders = 0;
        for (const CTmEvent& event : Stored()) {
            reminders += event.Reminders.size();
            stored.push_back(LineOf(event));
        }
        std::sort(plain.begin(), plain.end());
        std::sort(stored.begin(), stored.end());
        ASSERT_EQ(stored, plain);
        ASSERT_EQ(StoredReminders().size(), reminders) << "a reminder without an event";
    }
    static std::string LineOf(const PlainEvent& event) {
        return Line(event.start, event.end, event.label, event.description, event.color, event.every,
                    event.every > 0 ? event.last : event.start, event.popups);
    }
    static std::string LineOf(const CTmEvent& event) {
        std::vector<int> popups;
        for (const CTmReminder& reminder : event.Reminders)
            popups.push_back(static_cast<int>((event.Start.Seconds() - reminder.SendTime.Seconds()) / 60));
        const int every = event.Recurring == 1 ? PatternAt(event.DailyPattern, kDailyN) : 0;
        return Line(event.Start, event.End, event.Label, event.Description, event.BarColor, every,
                    event.Recurring == 1 ? event.RecurrenceEnd : event.Start, popups);
    }
    static std::string Line(const DateTime& start, const DateTime& end, const std::string& label,
                            const std::string& description, int color, int every, const DateTime& last,
                            const std::vector<int>& popups) {
        std::string line = DateFieldText(start) + " " + DateFieldText(end) + " " + label + " " + description + " " +
                           std::to_string(color) + " " + std::to_string(every) + " " + DateFieldText(last);
        for (const int minutes : popups)
            line += " " + std::to_string(minutes);
        return line;
    }

    std::mt19937 random{0};
    PlainCalendar model;
    int count = 0;
};

TEST_F(CalendarModel, AYearOfRandomChangesIsThatOfAPlainList) {
    random.seed(1);
    for (int day = 0; day < 365; ++day) {
        SCOPED_TRACE(day);
        clock.now = Day(2026, 1, 1, 6).PlusDays(day);
        const int what = model.events.empty() ? 0 : Upto(9);
        if (what < 3)
            Create();
        else if (what < 5)
            EditTexts();
        else if (what < 7)
            EditSchedule();
        else if (what < 8)
            Move();
        else
            Delete();
        Compare();
        if (HasFailure())
            return;
    }
}

}  // namespace
}  // namespace lore
