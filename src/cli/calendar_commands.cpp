#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "calendar/event_file.h"
#include "calendar/reminder_file.h"
#include "calendar/series.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/shown_text.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

class EventsCommand : public Command {
public:
    const char* Name() const override { return "events"; }
    const char* Help() const override { return "Lists the events of the calendar"; }
    void Declare(CLI::App& app) override {
        app.add_option("--from", from_, "Leave out what covers the range from this date ...")->type_name("DATE");
        app.add_option("--to", to_, "... to this one and more; given alone, a bound leaves out what lies beyond it")
            ->type_name("DATE");
    }
    ExitStatus Run(Session& session) override {
        std::optional<DateArgument> from, to;
        if (!ParseDateOption(from_, from) || !ParseDateOption(to_, to))
            return ExitStatus::WrongUsage;
        Print(session, Load(session, from, to));
        return ExitStatus::Done;
    }

private:
    static EventList Load(Session& session, const std::optional<DateArgument>& from,
                          const std::optional<DateArgument>& to) {
        const std::filesystem::path path = session.Data().Events();
        Loaded<EventList> loaded = from && to ? LoadEventsInRange(path, session.Context(), from->date, to->date)
                                              : LoadAllEvents(path, session.Context());
        session.Check(loaded.file, kEventsUnread, path);
        EventList events = std::move(loaded.value);
        if (from && !to)
            std::erase_if(events, [&](const CTmEvent& event) { return !from->date.IsEarlierOrEqual(event.Start); });
        if (to && !from)
            std::erase_if(events, [&](const CTmEvent& event) { return !event.End.IsEarlierOrEqual(to->date); });
        return events;
    }
    static void Print(const Session& session, const EventList& events) {
        Json list = Json::array();
        for (const CTmEvent& event : events) {
            if (session.Json())
                list.push_back(JsonEvent(event));
            else
                std::printf("%s  %s  %s  %s\n", event.Start.Format("%Y-%m-%d %H:%M").c_str(),
                            event.End.Format("%Y-%m-%d %H:%M").c_str(), Shown(event.EventId).c_str(),
                            Shown(event.Label).c_str());
        }
        if (session.Json())
            PrintJson(list);
    }

    std::optional<std::string> from_, to_;
};

class RemindersCommand : public Command {
public:
    const char* Name() const override { return "reminders"; }
    const char* Help() const override { return "Lists the reminders"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        const std::filesystem::path path = session.Data().Reminders();
        const Loaded<ReminderList> reminders = LoadAllReminders(path, session.Context());
        session.Check(reminders.file, kRemindersUnread, path);
        Json list = Json::array();
        for (const CTmReminder& reminder : reminders.value) {
            if (session.Json())
                list.push_back(JsonReminder(reminder));
            else
                std::printf("%s  %-6s  %s\n", reminder.SendTime.Format("%Y-%m-%d %H:%M").c_str(),
                            ReminderTypeName(reminder.Type), Shown(reminder.EventLabel).c_str());
        }
        if (session.Json())
            PrintJson(list);
        return ExitStatus::Done;
    }
};

class ExpandCommand : public Command {
public:
    const char* Name() const override { return "expand"; }
    const char* Help() const override { return "Shows the dates of each series of an event file"; }
    void Declare(CLI::App& app) override { app.add_option("FILE", file_, "An Events.dat")->required(); }
    ExitStatus Run(Session& session) override {
        Loaded<EventList> loaded = LoadAllEvents(file_, session.Context());
        if (!loaded.file.Ok()) {
            session.Faults().Tell({kEventsUnread, file_, loaded.file.Reason()});
            return ExitStatus::Fault;
        }
        EventList events = std::move(loaded.value);
        std::erase_if(events, [](const CTmEvent& event) { return event.Recurring != 1; });
        // Each event of a series shows the dates of all of it: held at once, they would be their square.
        if (session.Json())
            PrintJsonList(events.size(), [&](size_t i) { return Expanded(events[i]); });
        for (size_t i = 0; !session.Json() && i < events.size(); ++i)
            PrintLines(Expanded(events[i]));
        return ExitStatus::Done;
    }

private:
    static Json Expanded(const CTmEvent& event) {
        Json occurrences = Json::array();
        const auto [dates, isCut] = SeriesDates(event);
        for (const Occurrence& occurrence : dates)
            occurrences.push_back(Json::array({JsonDate(occurrence.start), JsonDate(occurrence.end)}));
        if (isCut)
            PrintError("the series of the event " + ToUtf8(event.EventId) + " goes on after its first " +
                       std::to_string(kMostOccurrences) + " dates; the others are left out");
        return {{"EventId", JsonText(event.EventId)},
                {"SeriesId", JsonText(event.SeriesId)},
                {"occurrences", std::move(occurrences)}};
    }
    static void PrintLines(const Json& event) {
        std::printf("%s\n", Shown(event["EventId"].get_ref<const std::string&>()).c_str());
        for (const Json& pair : event["occurrences"])
            std::printf("  %s  %s\n", pair[0].get_ref<const std::string&>().c_str(),
                        pair[1].get_ref<const std::string&>().c_str());
    }

    std::string file_;
};

}  // namespace

void AddCalendarCommands(Commands& commands) {
    commands.push_back(std::make_unique<EventsCommand>());
    commands.push_back(std::make_unique<RemindersCommand>());
    commands.push_back(std::make_unique<ExpandCommand>());
}

}  // namespace lore
