#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

#include "base/text.h"
#include "calendar/date_arithmetic.h"
#include "calendar/event_editor.h"
#include "calendar/limited_pauses.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/printed_prompts.h"
#include "cli/shown_text.h"
#include "online/http_client.h"
#include "online/http_reminder_server.h"
#include "ports/silent_progress.h"

namespace lore {

namespace {

constexpr int32_t kColors = 20;

/// Answers the question of a change to a series with what the command line says.
class GivenReach : public SeriesQuestion {
public:
    SeriesReach Ask(ModifyEventMode) override { return reach.value_or(SeriesReach::Cancel); }
    std::optional<SeriesReach> reach;
};

/// A rhythm by its name on the command line.
struct Rhythm {
    const char* name;
    SeriesType type;
    bool firstForm;
};
constexpr Rhythm kRhythms[] = {
    {"daily", kDaily, true},           {"weekdays", kDaily, false},          {"weekly", kWeekly, true},
    {"monthly", kMonthly, true},       {"monthly-weekday", kMonthly, false}, {"yearly", kYearly, true},
    {"yearly-weekday", kYearly, false}};
constexpr const char* kDayNames[] = {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};

using GivenDate = std::optional<DateArgument>;

/// What the command line says of an event. Fields that it doesn't name stay as they are.
struct EventOptions {
    std::optional<std::string> label, description, start, end, repeat, until;
    std::optional<int32_t> color, every;
    std::vector<std::string> days;
    std::vector<int32_t> popups;
    bool allDay = false, noRepeat = false, noReminders = false;

    void Declare(CLI::App& app, const char* startHelp, const char* endHelp) {
        app.add_option("--label", label, "The title");
        app.add_option("--description", description, "The text");
        app.add_option("--start", start, startHelp)->type_name("DATE");
        app.add_option("--end", end, endHelp)->type_name("DATE");
        app.add_flag("--all-day", allDay, "Whole days");
        app.add_option("--color", color, "Number of its bar's colour")
            ->check(CLI::Range(1, kColors))
            ->transform(DecimalNumber());
        app.add_option("--popup", popups, "Reminds this many minutes before the start; may be given up to four times")
            ->type_name("MINUTES")
            ->check(CLI::Range(0, std::numeric_limits<int32_t>::max()))
            ->transform(DecimalNumber());
        std::vector<std::string> names;
        for (const Rhythm& rhythm : kRhythms)
            names.emplace_back(rhythm.name);
        app.add_option("--repeat", repeat, "Makes a series, on the days that follow from its start")
            ->check(CLI::IsMember(names));
        app.add_option("--every", every, "Every so many days, weeks or months")
            ->check(CLI::Range(1, 999))
            ->transform(DecimalNumber());
        app.add_option("--days", days, "Days of a weekly series, such as MON,FRI")
            ->delimiter(',')
            ->check(
                CLI::IsMember(std::vector<std::string>(std::begin(kDayNames), std::end(kDayNames)), CLI::ignore_case));
        app.add_option("--until", until, "Last day of the series")->type_name("DATE");
    }
    void DeclareChanges(CLI::App& app) {
        app.add_flag("--no-repeat", noRepeat, "Takes the event, and no other, out of its series");
        app.add_flag("--no-reminders", noReminders, "Removes its reminders, before --popup adds any");
    }

    /// False, told, if a date is none, the title is empty or the event can't have one of the reminders.
    bool Apply(EventEditor& editor) const;

private:
    bool ApplyTimes(EventEditor& editor) const;
    void ApplyAllDay(EventEditor& editor, const GivenDate& from, const GivenDate& to) const;
    void ChooseRhythm(EventEditor& editor) const;
    /// What an event of that rhythm can't have; empty for nothing.
    std::string FaultInSeries(const EventEditor& editor, const GivenDate& last) const;
    bool ApplySeries(EventEditor& editor) const;
    bool ApplyReminders(EventEditor& editor) const;
};

/// The moment that is given, or the stored one. A day alone keeps the time of an event that is changed.
DateTime MomentOf(const GivenDate& given, const DateTime& stored, bool isNew) {
    if (!given)
        return stored;
    const DateTime kept = AtTimeOf(given->date, stored);
    return !given->hasTime && !isNew && kept.IsValid() ? kept : given->date;
}

void EventOptions::ApplyAllDay(EventEditor& editor, const GivenDate& from, const GivenDate& to) const {
    if (allDay || (from && !from->hasTime && editor.IsNew()))
        editor.SetAllDay(true);
    else if ((from && from->hasTime) || (to && to->hasTime))
        editor.SetAllDay(false);
}

bool EventOptions::ApplyTimes(EventEditor& editor) const {
    GivenDate from, to;
    if (!ParseDateOption(start, from) || !ParseDateOption(end, to))
        return false;
    const DateTime before = editor.Event().Start, first = MomentOf(from, before, editor.IsNew());
    DateTime last = MomentOf(to, editor.Event().End, editor.IsNew());
    if (to && IsLater(to->hasTime ? first : first.Midnight(), last)) {
        PrintError("--end is before the start");
        return false;
    }
    ApplyAllDay(editor, from, to);
    if (!to)
        last = editor.IsNew() ? first : last.PlusSeconds(first.Seconds() - before.Seconds());
    if (from || to)
        editor.PlaceAt(first, last);
    return true;
}

/// The slot of "every so many", if the rhythm has one.
std::optional<size_t> CountSlot(const EventEditor& editor) {
    const bool firstForm = editor.Pattern(0) == 1;
    if (!editor.IsRecurring())
        return std::nullopt;
    switch (editor.Tab()) {
        case kDaily:
            return firstForm ? std::optional<size_t>(kDailyN) : std::nullopt;
        case kWeekly:
            return kWeeklyN;
        case kMonthly:
            return firstForm ? kMonthlyDayN : kMonthlyWeekdayN;
        default:
            return std::nullopt;
    }
}

void EventOptions::ChooseRhythm(EventEditor& editor) const {
    if (noRepeat)
        editor.SetRecurring(false);
    if (!repeat)
        return;
    const Rhythm& rhythm =
        *std::find_if(std::begin(kRhythms), std::end(kRhythms), [&](const Rhythm& one) { return *repeat == one.name; });
    editor.SetRecurring(true);
    editor.ChooseTab(rhythm.type);
    if (rhythm.type != kWeekly)
        editor.ChooseForm(rhythm.firstForm);
}

std::string EventOptions::FaultInSeries(const EventEditor& editor, const GivenDate& last) const {
    if (!editor.IsRecurring() && (every || until || !days.empty()))
        return "--every, --days and --until belong to a series: say --repeat as well";
    if (every && !CountSlot(editor))
        return "this series takes no --every";
    if (!days.empty() && editor.Tab() != kWeekly)
        return "this series takes no --days";
    if (last && IsLater(editor.Event().RecurrenceStart.Midnight(), last->date))
        return "--until is before the start";
    return {};
}

bool EventOptions::ApplySeries(EventEditor& editor) const {
    ChooseRhythm(editor);
    GivenDate last;
    if (!ParseDateOption(until, last))
        return false;
    if (const std::string fault = FaultInSeries(editor, last); !fault.empty()) {
        PrintError(fault);
        return false;
    }
    if (every)
        editor.TypePattern(*CountSlot(editor), std::to_string(*every));
    for (size_t day = 0; !days.empty() && day < std::size(kDayNames); ++day) {
        const bool named =
            std::ranges::any_of(days, [&](const std::string& one) { return EqualNoCase(one, kDayNames[day]); });
        editor.SetPattern(kWeeklySunday + day, named ? 1 : 0);
    }
    if (last)
        editor.SetRecurrenceEnd(last->date);
    return true;
}

bool EventOptions::ApplyReminders(EventEditor& editor) const {
    while (noReminders && editor.Reminders() > 0)
        editor.RemoveReminder(0);
    for (const int32_t minutes : popups) {
        std::optional<CTmReminder> reminder = editor.NewReminder();
        if (!reminder)
            return false;
        SendBeforeStart(*reminder, minutes);
        editor.PutReminder(*reminder);
    }
    return true;
}

bool EventOptions::Apply(EventEditor& editor) const {
    if (label) {
        std::string clean = CleanText(FromUtf8(*label));
        if (Trim(clean).empty()) {
            PrintError("--label takes a title, which can't be empty");
            return false;
        }
        editor.SetLabel(std::move(clean));
    }
    if (description)
        editor.SetDescription(CleanText(FromUtf8(*description)));
    if (color)
        editor.SetBarColor(*color);
    return ApplyTimes(editor) && ApplySeries(editor) && ApplyReminders(editor);
}

class EventCommand : public Command {
public:
    const char* Name() const override { return "event"; }
    const char* Help() const override { return "Adds, changes or deletes an event of the calendar"; }
    void Declare(CLI::App& app) override {
        app.require_subcommand(1);
        CLI::App* const add = app.add_subcommand("add", "Makes an event, or a series");
        options_.Declare(*add, "First moment; a day alone makes it last whole days",
                         "Last moment; otherwise an hour after the start, or the same day");
        add->get_option("--start")->required();
        add->get_option("--label")->required();
        add->callback([this] { chosen_ = &EventCommand::Add; });
        CLI::App* const edit = app.add_subcommand("edit", "Changes an event");
        DeclareReach(*edit);
        options_.Declare(*edit, "First moment; a day alone keeps the time of day",
                         "Last moment; without it the event lasts as long as before");
        options_.DeclareChanges(*edit);
        edit->callback([this] { chosen_ = &EventCommand::Edit; });
        CLI::App* const remove = app.add_subcommand("delete", "Deletes an event");
        DeclareReach(*remove);
        remove->callback([this] { chosen_ = &EventCommand::Delete; });
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        if (!session.TakeLock(status))
            return status;
        const ReminderSetup setup = LoadReminderSetup(session.Store());
        HttpClient http;
        const auto server = MakeReminderServer(setup, session.GetSettings(), &http);
        LimitedPauses pauses(WaitFor);
        const CalendarWorld world{.eventFile = session.Data().Events(),
                                  .reminderFile = session.Data().Reminders(),
                                  .settings = session.GetSettings(),
                                  .prompts = prompts_,
                                  .progress = progress_,
                                  .clock = session.GetClock(),
                                  .guids = session.Guids(),
                                  .faults = session.Faults(),
                                  .server = *server,
                                  .question = question_,
                                  .setup = setup,
                                  .wait = [&](int milliseconds) {
                                      if (server->IsSetUp())  // no text is shown that wants to be read
                                          pauses.Pause(milliseconds);
                                  }};
        session.MakeDataFolder();
        EventList events;
        if (!LoadEvents(world, events))
            return ExitStatus::Fault;
        status = (this->*chosen_)(session, world, events);
        // The event is as it should be, but a reminder isn't, or some dates are missing.
        const bool lacks = session.Faults().Any() || (status == ExitStatus::Done && prompts_.HasWarned());
        return lacks ? ExitStatus::Fault : status;
    }

private:
    void DeclareReach(CLI::App& app) {
        app.add_option("ID", id_, "An EventId")->required();
        const auto flag = [&](const char* name, SeriesReach reach, const char* help) {
            return app.add_flag_callback(
                name, [this, reach] { question_.reach = reach; }, help);
        };
        CLI::Option* const only = flag("--this", SeriesReach::OnlyThis, "This event of its series alone");
        CLI::Option* const following = flag("--following", SeriesReach::AllFollowing, "This event and all later ones");
        CLI::Option* const all = flag("--all", SeriesReach::EntireSeries, "The whole series");
        only->excludes(following)->excludes(all);
        following->excludes(all);
    }

    ExitStatus Add(Session& session, const CalendarWorld& world, const EventList& before) {
        EventEditor editor = EventEditor::ForNewEvent(world, std::nullopt);
        if (!options_.Apply(editor))
            return ExitStatus::WrongUsage;
        if (const ExitStatus status = StatusOf(editor.Save()); status != ExitStatus::Done)
            return status;
        EventList now;
        LoadEvents(world, now);
        TellLastDay(PrintNew(session, before, std::move(now)));
        return ExitStatus::Done;
    }

    ExitStatus Edit(Session& session, const CalendarWorld& world, const EventList& events) {
        const CTmEvent* const event = Find(events);
        if (!event)
            return ExitStatus::NothingFound;
        if (!SaysReach(*event))
            return ExitStatus::WrongUsage;
        EventEditor editor = EventEditor::ForEvent(world, *event);
        if (!options_.Apply(editor))
            return ExitStatus::WrongUsage;
        const ExitStatus status = StatusOf(editor.Save());
        if (status == ExitStatus::Done)
            PrintEdited(session, world, events, *event);
        return status;
    }
    /// The event, or those of a series that was made anew, which have other ids. Says so if the event has left or moved
    /// without the others.
    void PrintEdited(const Session& session, const CalendarWorld& world, const EventList& events,
                     const CTmEvent& before) const {
        EventList now;
        LoadEvents(world, now);
        const int index = FindEventIndex(now, id_);
        if (index < 0) {
            const EventList made = PrintNew(session, events, std::move(now));
            if (!IsSeriesMember(before))
                TellLastDay(made);
            return;
        }
        PrintID(session);
        if (IsSeriesMember(before) && question_.reach != SeriesReach::OnlyThis)
            TellAlone(before, now[static_cast<size_t>(index)]);
    }
    /// That an event was changed without its series, though more was meant.
    void TellAlone(const CTmEvent& before, const CTmEvent& now) const {
        if (!IsSeriesMember(now))
            PrintError("only this event has changed: it has left its series, and the others stay as they are");
        else if (options_.start && now.Start != before.Start)
            PrintError("only this event has moved: the start isn't part of what the events of a series share");
    }
    /// How far a new series goes whose last day nobody has named.
    void TellLastDay(const EventList& made) const {
        if (!options_.repeat || options_.until || made.empty())
            return;
        PrintMessage("The series is made up to " + made.back().Start.Format("%m/%d/%Y") + ", with " +
                     std::to_string(made.size()) + (made.size() == 1 ? " event" : " events") +
                     "; --until gives it another last day.");
    }

    ExitStatus Delete(Session& session, const CalendarWorld& world, const EventList& events) {
        const CTmEvent* const event = Find(events);
        if (!event)
            return ExitStatus::NothingFound;
        if (!SaysReach(*event))
            return ExitStatus::WrongUsage;
        if (!(IsSeriesMember(*event) ? DeleteMember(world, *event) : DeleteEvent(world, *event)))
            return ExitStatus::Fault;
        PrintID(session);
        return ExitStatus::Done;
    }

    bool DeleteMember(const CalendarWorld& world, const CTmEvent& event) const {
        switch (*question_.reach) {
            case SeriesReach::EntireSeries:
                return DeleteEntireSeries(world, event);
            case SeriesReach::AllFollowing:
                return DeleteFollowingEvents(world, event);
            default:
                return DeleteSingleEvent(world, event);
        }
    }

    const CTmEvent* Find(const EventList& events) const {
        const int index = FindEventIndex(events, id_);
        if (index < 0)
            PrintError("there is no event " + id_);
        return index < 0 ? nullptr : &events[static_cast<size_t>(index)];
    }
    bool SaysReach(const CTmEvent& event) const {
        const bool says = question_.reach || !IsSeriesMember(event);
        if (!says)
            PrintError("the event belongs to a series: say --this, --following or --all");
        return says;
    }
    static ExitStatus StatusOf(EventSave result) {
        switch (result) {
            case EventSave::Saved:
                return ExitStatus::Done;
            case EventSave::NotWritten:
                return ExitStatus::Fault;
            default:
                return ExitStatus::NothingFound;
        }
    }
    void PrintID(const Session& session) const {
        if (session.Json())
            PrintJson({{"EventId", JsonText(FromUtf8(id_))}});
    }
    /// Gives the events that weren't there before.
    static EventList PrintNew(const Session& session, const EventList& before, EventList made) {
        std::unordered_set<std::string_view> known;
        for (const CTmEvent& event : before)
            known.insert(event.EventId);
        std::erase_if(made, [&](const CTmEvent& event) { return known.contains(event.EventId); });
        Json ids = Json::array();
        for (const CTmEvent& event : made) {
            if (session.Json())
                ids.push_back(JsonText(event.EventId));
            else
                std::printf("%s\n", Shown(event.EventId).c_str());
        }
        if (session.Json())
            PrintJson(ids);
        return made;
    }

    PrintedPrompts prompts_;
    SilentProgress progress_;
    GivenReach question_;
    EventOptions options_;
    std::string id_;
    ExitStatus (EventCommand::*chosen_)(Session&, const CalendarWorld&, const EventList&) = nullptr;
};

}  // namespace

void AddEventCommands(Commands& commands) {
    commands.push_back(std::make_unique<EventCommand>());
}

}  // namespace lore
