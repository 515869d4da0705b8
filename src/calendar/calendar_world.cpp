#include "calendar/calendar_world.h"

#include "calendar/event_file.h"
#include "calendar/reminder_file.h"
#include "notes/file_faults.h"
#include "notes/keep_damaged.h"

namespace lore {

namespace {

constexpr char kEvents[] = "The list of events";
constexpr char kReminders[] = "The list of reminders";
constexpr char kEventsUnwritten[] = "The events could not be saved";
constexpr char kRemindersUnwritten[] = "The reminders could not be saved";

void NoteDamage(const CalendarWorld& world, const std::filesystem::path& path, bool isWhole) {
    if (isWhole)
        world.damaged->erase(path);
    else
        world.damaged->insert(path);
}

/// Gives what a file held. False if it can't be read: then nothing may be written.
template <typename List>
bool TakeRead(const CalendarWorld& world, const char* what, const std::filesystem::path& path, Loaded<List> loaded,
              List& list) {
    NoteDamage(world, path, loaded.isWhole);
    TellFailedRead(world.faults, what, path, loaded.file);
    list = std::move(loaded.value);
    return loaded.file.Ok() || loaded.file.Missing();
}

/// Before a file is written anew. With a failure it may not be written.
FileResult KeepIfDamaged(const CalendarWorld& world, const char* what, const std::filesystem::path& path) {
    if (!world.damaged->contains(path))
        return {};
    const FileResult kept = KeepDamaged(what, path, kNotReadWhole, world.faults);
    if (kept.Ok())
        world.damaged->erase(path);
    return kept;
}

/// One of the two files, with what is said of it.
struct FileTexts {
    const char *what, *unwritten;
    const std::filesystem::path& path;
};

bool Prepare(const CalendarWorld& world, const FileTexts& texts, const RecordWriter& stream, PreparedFile& file) {
    FileResult result = KeepIfDamaged(world, texts.what, texts.path);
    if (result.Ok())
        result = file.Prepare(texts.path, stream.DiskBytes());
    if (!result.Ok())
        TellFailedWrite(world.faults, texts.unwritten, texts.path, result);
    return result.Ok();
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
    return TakeRead(world, kEventsUnread, world.eventFile, LoadAllEvents(world.eventFile, world.Context()), events);
}

bool LoadEventsInRange(const CalendarWorld& world, const DateTime& first, const DateTime& last, EventList& events) {
    return TakeRead(world, kEventsUnread, world.eventFile,
                    LoadEventsInRange(world.eventFile, world.Context(), first, last), events);
}

bool SaveEvents(const CalendarWorld& world, const EventList& events) {
    FileResult result = KeepIfDamaged(world, kEvents, world.eventFile);
    if (result.Ok())
        result = WriteEvents(world.eventFile, events);
    TellFailedWrite(world.faults, kEventsUnwritten, world.eventFile, result);
    return result.Ok();
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
    const auto keep = [&] {
        NoteDamage(world, world.eventFile, false);
        return KeepIfDamaged(world, kEvents, world.eventFile);
    };
    const FileResult result = MergeSaveEvents(world.eventFile, world.Context(), events, world.progress, keep);
    TellFailedWrite(world.faults, kEventsUnwritten, world.eventFile, result);
    return result.Ok();
}

bool LoadReminders(const CalendarWorld& world, ReminderList& reminders) {
    return TakeRead(world, kRemindersUnread, world.reminderFile, LoadAllReminders(world.reminderFile, world.Context()),
                    reminders);
}

bool LoadRemindersInRange(const CalendarWorld& world, const DateTime& first, const DateTime& last,
                          ReminderList& reminders) {
    return TakeRead(world, kRemindersUnread, world.reminderFile,
                    LoadRemindersInRange(world.reminderFile, world.Context(), first, last), reminders);
}

bool SaveReminders(const CalendarWorld& world, const ReminderList& reminders) {
    FileResult result = KeepIfDamaged(world, kReminders, world.reminderFile);
    if (result.Ok())
        result = WriteReminders(world.reminderFile, reminders);
    TellFailedWrite(world.faults, kRemindersUnwritten, world.reminderFile, result);
    return result.Ok();
}

bool JointSave::PrepareEvents(const EventList& events) {
    RecordWriter stream;
    WriteEvents(stream, events);
    return Prepare(world_, {kEvents, kEventsUnwritten, world_.eventFile}, stream, events_);
}

bool JointSave::PrepareReminders(const ReminderList& reminders) {
    RecordWriter stream;
    WriteReminders(stream, reminders);
    return Prepare(world_, {kReminders, kRemindersUnwritten, world_.reminderFile}, stream, reminders_.emplace());
}

bool JointSave::Commit(const ReminderList& before) {
    if (CommitReminders() && CommitEvents())
        return true;
    // Where the new events stand, however surely, the new reminders belong to them.
    if (reminders_ && reminders_->HasTakenPlace() && !events_.HasTakenPlace())
        PutBack(before);
    return false;
}

bool JointSave::CommitReminders() {
    if (!reminders_)
        return true;
    const FileResult result = reminders_->Commit();
    TellFailedWrite(world_.faults, kRemindersUnwritten, world_.reminderFile, result);
    return result.Ok();
}

bool JointSave::CommitEvents() {
    const FileResult result = events_.Commit();
    TellFailedWrite(world_.faults, kEventsUnwritten, world_.eventFile, result);
    return result.Ok();
}

/// That it was done is told nowhere: what it is done for has failed, and stays told.
void JointSave::PutBack(const ReminderList& reminders) const {
    const FileResult result = WriteReminders(world_.reminderFile, reminders);
    if (!result.Ok())
        TellFailedWrite(world_.faults, kRemindersUnwritten, world_.reminderFile, result);
}

}  // namespace lore
