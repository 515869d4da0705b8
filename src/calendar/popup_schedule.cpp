#include "calendar/popup_schedule.h"

#include <algorithm>
#include <utility>

#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"

namespace lore {

namespace {

constexpr int64_t kLate = kMinute;
constexpr int64_t kLongestLook = kMinute;
/// So long what was shown is remembered once its reminder has gone: a deleted one may come back.
constexpr int64_t kRemembered = 30 * kDay;
/// What was shown for a moment so far ahead came while the clock was wrong.
constexpr int64_t kFarAhead = kDay;

bool IsPopup(const CTmReminder& reminder) {
    return reminder.Type == static_cast<int32_t>(ReminderType::Popup) && reminder.SendTime.IsValid();
}

bool StartsLater(const CTmReminder& reminder, const DateTime& now) {
    return !reminder.EventId.empty() && reminder.EventStart.IsValid() && reminder.EventStart.Seconds() > now.Seconds();
}

std::string DayAndTime(const DateTime& time) {
    return time.Format("%A, %B %d %Y") + " at " + ClockTime(time);
}

}  // namespace

void PopupSchedule::SetShown(ShownPopups shown) {
    shown_ = std::move(shown);
}

bool PopupSchedule::IsOnScreen(const PopupKey& key) const {
    return std::ranges::any_of(onScreen_, [&](const Popup& popup) { return popup.Key() == key; });
}

void PopupSchedule::WaitFor(const PopupKey& key) {
    if (IsOnScreen(key))
        return;
    const auto shown = shown_.find(key);
    if (shown == shown_.end())
        waiting_.emplace(key.sendTime, key);
    else if (shown->second.IsValid())
        waiting_.emplace(shown->second.Seconds(), key);
}

void PopupSchedule::ForgetOld(const DateTime& now) {
    if (!now.IsValid())
        return;
    std::erase_if(shown_, [&](const auto& entry) {
        return entry.first.sendTime < now.Seconds() - kRemembered && !popups_.contains(entry.first);
    });
}

void PopupSchedule::ForgetAhead(const DateTime& now) {
    for (auto entry = shown_.begin(); now.IsValid() && entry != shown_.end();) {
        const auto [key, again] = *entry;
        if (key.sendTime <= now.Seconds() + kFarAhead || again.IsValid()) {
            ++entry;
            continue;
        }
        entry = shown_.erase(entry);
        if (popups_.contains(key))
            WaitFor(key);
    }
}

void PopupSchedule::SetReminders(const ReminderList& reminders, const DateTime& now) {
    popups_.clear();
    waiting_.clear();
    for (const CTmReminder& reminder : reminders) {
        if (IsPopup(reminder))
            WaitFor(popups_.emplace(NextKey(popups_, KeyOf(reminder)), reminder).first->first);
    }
    std::erase_if(onScreen_, [&](const Popup& popup) { return !popups_.contains(popup.Key()); });
    for (Popup& popup : onScreen_)
        popup.reminder = popups_.at(popup.Key());
    ForgetOld(now);
}

size_t PopupSchedule::TakeDue(const DateTime& now) {
    ForgetAhead(now);
    size_t count = 0;
    for (; !waiting_.empty() && waiting_.begin()->first <= now.Seconds(); ++count) {
        const auto [due, key] = *waiting_.begin();
        waiting_.erase(waiting_.begin());
        spans_.erase(key);
        shown_[key] = DateTime::FromSeconds(due);
        onScreen_.push_back({popups_.at(key), DateTime::FromSeconds(due), now.Seconds() - due >= kLate, key.number});
    }
    return count;
}

DateTime PopupSchedule::NextTime() const {
    return waiting_.empty() ? DateTime() : DateTime::FromSeconds(waiting_.begin()->first);
}

int64_t PopupSchedule::SecondsToNextLook(const DateTime& now) const {
    int64_t next = now.Seconds() + kLongestLook;
    if (!waiting_.empty())
        next = std::min(next, waiting_.begin()->first);
    for (const Popup& popup : onScreen_) {
        if (StartsLater(popup.reminder, now))
            next = std::min(next, popup.reminder.EventStart.Seconds());
    }
    return std::max<int64_t>(next - now.Seconds(), 0);
}

void PopupSchedule::Dismiss(const PopupKey& key) {
    if (std::erase_if(onScreen_, [&](const Popup& popup) { return popup.Key() == key; }) > 0)
        shown_[key] = DateTime();
}

void PopupSchedule::DismissAll() {
    for (const Popup& popup : std::exchange(onScreen_, {}))
        shown_[popup.Key()] = DateTime();
}

void PopupSchedule::Snooze(const PopupKey& key, const DateTime& until, bool isSpan) {
    const size_t removed = std::erase_if(onScreen_, [&](const Popup& popup) { return popup.Key() == key; });
    if (removed == 0 || !until.IsValid())
        return;
    shown_[key] = until;
    WaitFor(key);
    if (isSpan)
        spans_.insert(key);
}

void PopupSchedule::MoveClock(int64_t seconds) {
    if (seconds == 0 || spans_.empty())
        return;
    for (auto& [key, again] : shown_) {
        if (spans_.contains(key))
            again = again.PlusSeconds(seconds);
    }
    waiting_.clear();
    for (const auto& [key, reminder] : popups_)
        WaitFor(key);
}

std::vector<SnoozeChoice> SnoozeChoices(const CTmReminder& reminder, const DateTime& now) {
    const auto span = [&](const char* text, int64_t seconds) {
        return SnoozeChoice{text, now.PlusSeconds(seconds), true};
    };
    std::vector<SnoozeChoice> choices = {span("5 Minutes", 5 * kMinute),   span("10 Minutes", 10 * kMinute),
                                         span("30 Minutes", 30 * kMinute), span("1 Hour", kHour),
                                         span("4 Hours", 4 * kHour),       {"1 Day", now.PlusDays(1), false}};
    if (StartsLater(reminder, now))
        choices.push_back({"Until the Event Starts", reminder.EventStart, false});
    return choices;
}

PopupText TextOf(const Popup& popup, const DateTime& now) {
    const CTmReminder& reminder = popup.reminder;
    PopupText text;
    const bool ofEvent = !reminder.EventId.empty();
    text.label = reminder.EventLabel.empty() ? (ofEvent ? "Event" : "Reminder") : reminder.EventLabel;
    if (ofEvent && reminder.EventStart.IsValid())
        text.time = (StartsLater(reminder, now) ? "Starts " : "Started ") + DayAndTime(reminder.EventStart);
    else if (!popup.isLate)
        text.time = DayAndTime(reminder.SendTime);
    if (popup.isLate)
        text.late = "Missed on " + DayAndTime(popup.due);
    text.message = reminder.Message;
    text.description = reminder.EventDescription;
    return text;
}

}  // namespace lore
