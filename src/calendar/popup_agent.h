#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

#include "calendar/popup_schedule.h"
#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/instance_channel.h"

namespace lore {

/// What the agent asks of the program around it. None may be empty.
struct AgentHooks {
    std::function<void()> lookSoon;       ///< calls Look from the event loop
    std::function<void()> checkSettings;  ///< reads the options again
    std::function<void()> bringToFront;   ///< shows the popups
    std::function<void()> close;          ///< ends the agent
};

/// The reminder agent without its window: keeps the popups of the reminder file, remembers in a file of its own what it
/// has shown, and takes the messages of the main program. It never writes the reminder file.
class PopupAgent {
public:
    PopupAgent(std::filesystem::path reminderFile, std::filesystem::path shownFile, Clock& clock, FaultNotice& faults,
               AgentHooks hooks);

    /// Reads both files. A reminder file that can't be read leaves the reminders as they are.
    void Start();
    /// Reads the reminder file again if it is another one, or a message said so, and takes what is due. True if
    /// anything on the screen may have changed.
    bool Look();
    /// Popups that came since the last call of this.
    size_t TakeNew() { return std::exchange(new_, 0); }
    int64_t SecondsToNextLook() const { return schedule_.SecondsToNextLook(clock_.Now()); }
    /// A message of another process; gives the answer to it.
    uint32_t Receive(const InstanceMessage& message);

    const PopupSchedule& Schedule() const { return schedule_; }
    DateTime Now() const { return clock_.Now(); }
    void Dismiss(const PopupKey& key);
    void DismissAll();
    void Snooze(const PopupKey& key, const SnoozeChoice& choice);
    /// Puts off all that are on the screen by the usual choice.
    void SnoozeAll();

private:
    /// Tells files of one content from those of another, mostly.
    struct FileStamp {
        std::filesystem::file_time_type time{};
        uintmax_t size = 0;
        bool operator==(const FileStamp&) const = default;
    };
    FileStamp StampOfReminders() const;
    bool ReadReminders();
    void FollowClock();
    void KeepShown();
    /// Tells a failure once, not at each look.
    bool Told(const FileResult& result, const char* what, const std::filesystem::path& path, int& last);

    std::filesystem::path reminderFile_, shownFile_;
    Clock& clock_;
    FaultNotice& faults_;
    AgentHooks hooks_;
    PopupSchedule schedule_;
    std::optional<FileStamp> stamp_;  // of what has been read; none: it is to be read
    ShownPopups kept_;                // what the file holds
    bool mayKeep_ = true;
    size_t new_ = 0;
    int64_t ahead_ = 0;  // minutes of the local time ahead of the universal one
    int readError_ = 0, writeError_ = 0;
};

}  // namespace lore
