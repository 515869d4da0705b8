#include "calendar/calendar_world.h"

#include "base/file_copy.h"
#include "calendar/event_file.h"
#include "calendar/reminder_file.h"

namespace lore {

namespace {

bool Told(const CalendarWorld& world, const FileResult& result, const char* what, const std::filesystem::path& path) {
    if (!result.Ok())
        world.faults.Tell({what, path.string(), result.Reason()});
    return result.Ok();
}

/// A file that isn't there has no records.
bool IsReadable(const CalendarWorld& world, const FileResult& result, const char* what,
                const std::filesystem::path& path) {
    return result.Missing() || Told(world, result, what, path);
}

void NoteDamage(const CalendarWorld& world, const std::filesystem::path& path, bool isWhole) {
    if (isWhole)
        world.damaged->erase(path);
    else
        world.damaged->insert(path);
}

/// Keeps what a damaged file holds, then writes it anew.
template <typename Write>
FileResult WriteAnew(const CalendarWorld& world, const std::filesystem::path& path, Write write) {
    if (world.damaged->contains(path)) {
        if (const FileResult kept = KeepIfThere(path); !kept.Ok())
            return kept;
        world.damaged->erase(path);
    }
    return write();
}

}  // namespace

ReminderSetup LoadReminderSetup(const SettingsStore& store) {
    constexpr char kSection[] = "Reminders";
    ReminderSetup setup;
    setup.server = store.Get(kSection, "Server").value_or("");
    setup.user = store.Get(kSection, "User").value_or("");
    setup.supportAddress = store.Get(kSection, "SupportAddress").value_or("");
    for (size_t i = 0; i < kProviders; ++i)
        setup.gateways[i] = store.Get(kSection, "Gateway" + std::to_string(i)).value_or("");
    return setup;
}

void CalendarWorld::ShowProgress(const std::string& text) const {
    progress.SetMessage(text);
    progress.Show();
}

void CalendarWorld::TellAgent() const {
    if (agent)
        agent->Send(kAgentReloadReminders);
}

void CalendarWorld::ShowProgress(const std::string& text, int milliseconds) const {
    ShowProgress(text);
    wait(milliseconds);
}

bool LoadEvents(const CalendarWorld& world, EventList& events) {
    bool isWhole = true;
    const FileResult result = LoadAllEvents(world.eventFile, world.Context(), events, &isWhole);
    NoteDamage(world, world.eventFile, isWhole);
    return IsReadable(world, result, "The events could not be read", world.eventFile);
}

bool SaveEvents(const CalendarWorld& world, const EventList& events) {
    const FileResult result = WriteAnew(world, world.eventFile, [&] { return WriteEvents(world.eventFile, events); });
    return Told(world, result, "The events could not be saved", world.eventFile);
}

bool SaveEventsWithProgress(const CalendarWorld& world, const EventList& events, size_t changed) {
    world.progress.SetRange(0, static_cast<int>(changed));
    world.progress.SetPosition(static_cast<int>(changed));
    world.ShowProgress("Updating Events...");
    world.ShowProgress("Saving Events...");
    const bool saved = SaveEvents(world, events);
    world.progress.Hide();
    return saved;
}

bool MergeEvents(const CalendarWorld& world, const EventList& events) {
    const FileResult result = MergeSaveEvents(world.eventFile, world.Context(), events, world.progress);
    return Told(world, result, "The events could not be saved", world.eventFile);
}

bool LoadReminders(const CalendarWorld& world, ReminderList& reminders) {
    bool isWhole = true;
    const FileResult result = LoadAllReminders(world.reminderFile, world.Context(), reminders, &isWhole);
    NoteDamage(world, world.reminderFile, isWhole);
    return IsReadable(world, result, "The reminders could not be read", world.reminderFile);
}

bool SaveReminders(const CalendarWorld& world, const ReminderList& reminders) {
    const FileResult result =
        WriteAnew(world, world.reminderFile, [&] { return SaveReminders(world.reminderFile, reminders); });
    return Told(world, result, "The reminders could not be saved", world.reminderFile);
}

}  // namespace lore
