#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "base/prepared_file.h"
#include "calendar/event_list.h"
#include "calendar/modify_event.h"
#include "calendar/reminder_list.h"
#include "ports/agent.h"
#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/reminder_server.h"
#include "settings/settings.h"

namespace lore {

inline constexpr size_t kProviders = 50;

/// What stands in the settings store, section "Reminders", for whoever runs a reminder server. All of it is empty by
/// default.
struct ReminderSetup {
    std::string server;                            ///< "Server": http address of the reminder server
    std::string user;                              ///< "User": by what that server knows the user
    std::string supportAddress;                    ///< "SupportAddress": ends the texts that tell of a failure
    std::array<std::string, kProviders> gateways;  ///< "Gateway0" to "Gateway49": domains by row of the provider table
};
ReminderSetup LoadReminderSetup(const SettingsStore& store);

/// Whether a flow shows what it does, and asks or tells of a server that fails.
enum class Report { Shown, Silent };

/// What the calendar works on and asks of the world. All of it outlives the flows.
struct CalendarWorld {
    std::filesystem::path eventFile, reminderFile;
    Settings& settings;
    Prompts& prompts;
    Progress& progress;
    Clock& clock;
    GuidSource& guids;
    FaultNotice& faults;
    ReminderServer& server;
    SeriesQuestion& question;
    ReminderSetup setup;
    Agent* agent = nullptr;  ///< may be null
    /// Lets milliseconds pass: short pauses, so that texts can be read and the server isn't hit too fast.
    std::function<void(int)> wait = [](int) {};
    /// Stores the settings at once.
    std::function<void()> storeSettings = [] {};
    /// Files that weren't whole when they were read last.
    std::shared_ptr<std::set<std::filesystem::path>> damaged = std::make_shared<std::set<std::filesystem::path>>();

    ReadContext Context() const { return {.now = clock.Now(), .nowUtc = clock.NowUtc(), .guids = &guids}; }
    void ShowProgress(const std::string& text) const;
    /// After a change of the reminders.
    void TellAgent() const;
    /// A change of the text, then a pause.
    void ShowProgress(const std::string& text, int milliseconds) const;
};

// The two files. Failures are told. A file that is there and can't be read is nothing to work on, for writing it would
// lose what it holds: the result of loading is then false, and nothing may be written. One that isn't there is empty.
// What a damaged file holds is kept beside before it is written anew, and that is told.

bool LoadEvents(const CalendarWorld& world, EventList& events);
/// Those that LoadEventsInRange gives for the file; so with the reminders.
bool LoadEventsInRange(const CalendarWorld& world, const DateTime& first, const DateTime& last, EventList& events);
bool SaveEvents(const CalendarWorld& world, const EventList& events);
/// SaveEvents under the texts of a merge, of `changed` events among them.
bool SaveEventsWithProgress(const CalendarWorld& world, const EventList& events, size_t changed);
/// Merges events into the file.
bool MergeEvents(const CalendarWorld& world, const EventList& events);
bool LoadReminders(const CalendarWorld& world, ReminderList& reminders);
bool LoadRemindersInRange(const CalendarWorld& world, const DateTime& first, const DateTime& last,
                          ReminderList& reminders);
bool SaveReminders(const CalendarWorld& world, const ReminderList& reminders);

/// New contents of the two files that take their places together or not at all: both stand on the disk before the first
/// of them does.
class JointSave {
public:
    /// The world outlives it.
    explicit JointSave(const CalendarWorld& world) : world_(world) {}

    /// Writes beside the file what it is to hold. False, told, if the disk doesn't take it: then nothing is committed.
    bool PrepareEvents(const EventList& events);
    /// Left out where the reminders stay as they are.
    bool PrepareReminders(const ReminderList& reminders);
    /// The reminders come first: a program that ends in between leaves an event without its reminders, and no reminder
    /// whose event is gone. False, told, with a failure: the files hold what they held, `before` among it, unless all
    /// that failed is the last flush. What can't be put back is told too.
    bool Commit(const ReminderList& before);

private:
    bool CommitReminders();
    bool CommitEvents();
    void PutBack(const ReminderList& reminders) const;

    const CalendarWorld& world_;
    PreparedFile events_;
    std::optional<PreparedFile> reminders_;
};

}  // namespace lore
