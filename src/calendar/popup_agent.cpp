#include "calendar/popup_agent.h"

#include <cmath>
#include <string_view>
#include <system_error>

#include "calendar/date_arithmetic.h"
#include "calendar/reminder_file.h"
#include "notes/file_faults.h"
#include "ports/agent.h"

namespace lore {

namespace {

/// To the minute, for a second may begin between the two readings.
int64_t MinutesAhead(const Clock& clock) {
    const DateSpan ahead = SpanBetween(clock.NowUtc(), clock.Now());
    return std::lround(static_cast<double>(ahead.seconds) / kMinute);
}

}  // namespace

PopupAgent::PopupAgent(std::filesystem::path reminderFile, std::filesystem::path shownFile, Clock& clock,
                       FaultNotice& faults, AgentHooks hooks)
    : reminderFile_(std::move(reminderFile)),
      shownFile_(std::move(shownFile)),
      clock_(clock),
      faults_(faults),
      hooks_(std::move(hooks)) {}

void PopupAgent::Start() {
    const FileResult read = LoadShownPopups(shownFile_, kept_);
    int last = 0;
    // A file that is there and can't be read isn't replaced by one that knows less.
    mayKeep_ = read.Missing() || Told(read, "What has been shown could not be read", shownFile_, last);
    schedule_.SetShown(kept_);
    ahead_ = MinutesAhead(clock_);
    Look();
}

void PopupAgent::FollowClock() {
    const int64_t before = std::exchange(ahead_, MinutesAhead(clock_));
    schedule_.MoveClock((ahead_ - before) * kMinute);
}

bool PopupAgent::Look() {
    FollowClock();
    const bool isRead = stamp_ != StampOfReminders() && ReadReminders();
    const size_t came = schedule_.TakeDue(clock_.Now());
    new_ += came;
    KeepShown();
    return isRead || came > 0;
}

PopupAgent::FileStamp PopupAgent::StampOfReminders() const {
    FileStamp stamp;
    std::error_code error;
    stamp.time = std::filesystem::last_write_time(reminderFile_, error);
    stamp.size = std::filesystem::file_size(reminderFile_, error);
    return stamp;
}

bool PopupAgent::ReadReminders() {
    const FileStamp stamp = StampOfReminders();  // what is written while it is read has a later one
    NoGuids guids;
    // A moment that can't be read is none, so that a damaged record doesn't come up at each reading.
    const auto read = LoadAllReminders(reminderFile_, {.now = {}, .nowUtc = {}, .guids = &guids});
    if (!read.file.Missing() && !Told(read.file, kRemindersUnread, reminderFile_, readError_))
        return false;
    stamp_ = stamp;
    readError_ = 0;
    schedule_.SetReminders(read.value, clock_.Now());
    return true;
}

void PopupAgent::KeepShown() {
    if (!mayKeep_ || schedule_.Shown() == kept_)
        return;
    const FileResult written = SaveShownPopups(shownFile_, schedule_.Shown());
    if (!Told(written, "What has been shown could not be saved", shownFile_, writeError_))
        return;
    writeError_ = 0;
    kept_ = schedule_.Shown();
}

bool PopupAgent::Told(const FileResult& result, const char* what, const std::filesystem::path& path, int& last) {
    if (!result.Ok() && result.error != last)
        faults_.Tell({what, path.string(), result.Reason()});
    last = result.error;
    return result.Ok();
}

void PopupAgent::Dismiss(const PopupKey& key) {
    schedule_.Dismiss(key);
    KeepShown();
}

void PopupAgent::DismissAll() {
    schedule_.DismissAll();
    KeepShown();
}

void PopupAgent::Snooze(const PopupKey& key, const SnoozeChoice& choice) {
    FollowClock();
    schedule_.Snooze(key, choice.until, choice.isSpan);
    KeepShown();
}

void PopupAgent::SnoozeAll() {
    FollowClock();
    for (const Popup& popup : std::vector<Popup>(schedule_.OnScreen())) {
        const SnoozeChoice choice = SnoozeChoices(popup.reminder, Now())[kUsualSnooze];
        schedule_.Snooze(popup.Key(), choice.until, choice.isSpan);
    }
    KeepShown();
}

uint32_t PopupAgent::Receive(const InstanceMessage& message) {
    const auto holds = [&](const char* word) { return message.text.find(word) != std::string::npos; };
    switch (message.tag) {
        case InstanceMessage::kActivate:
            hooks_.bringToFront();
            [[fallthrough]];
        case InstanceMessage::kIsMe:
        case InstanceMessage::kDocument:
            return 1;
        case InstanceMessage::kCommand:
            break;
        default:
            return 0;
    }
    if (holds(kAgentCheckSettings)) {
        hooks_.checkSettings();
    } else if (holds(kAgentReloadReminders)) {
        stamp_.reset();
        hooks_.lookSoon();
    } else if (holds(kAgentClose)) {
        hooks_.close();
    } else {
        return 0;
    }
    return 1;
}

}  // namespace lore
