#pragma once

#include <map>
#include <set>
#include <vector>

#include "calendar/reminder_list.h"
#include "calendar/shown_popups.h"

namespace lore {

/// A popup on the screen.
struct Popup {
    CTmReminder reminder;
    DateTime due;         ///< its SendTime, or what it was put off to
    bool isLate = false;  ///< its time had passed by a minute and more when it came up
    int32_t number = 0;   ///< among the popups of its id and moment

    PopupKey Key() const { return KeyOf(reminder, number); }
};

/// Which popup reminders come up when: each once at its time, those whose time passed meanwhile as soon as somebody
/// asks, and those that the user puts off once more. What has been shown is remembered by record and moment, so that
/// nothing that was dismissed comes twice; what nobody has answered comes again at the next start.
class PopupSchedule {
public:
    /// What has been shown before. First of all.
    void SetShown(ShownPopups shown);
    const ShownPopups& Shown() const { return shown_; }
    /// The reminders of the file as it is now. E-mails, text messages and records without a moment are left aside. What
    /// is on the screen follows: texts change, and popups whose reminder went or was moved disappear.
    void SetReminders(const ReminderList& reminders, const DateTime& now);

    /// Puts on the screen what is due at `now`. Gives how many came. What was dismissed for a moment more than a day
    /// ahead, since the clock was ahead once, comes at its time.
    size_t TakeDue(const DateTime& now);
    /// When the next popup is due; null if none waits.
    DateTime NextTime() const;
    /// Seconds until somebody should look again: until the next popup, or the start of an event whose popup is on the
    /// screen, but at most a minute, since clocks are set and computers sleep.
    int64_t SecondsToNextLook(const DateTime& now) const;

    /// What is on the screen, in the order in which it came.
    const std::vector<Popup>& OnScreen() const { return onScreen_; }
    /// Takes a popup from the screen for good.
    void Dismiss(const PopupKey& key);
    void DismissAll();
    /// Takes a popup from the screen until a moment. With `isSpan` the time until then passes, whatever the clock
    /// shows.
    void Snooze(const PopupKey& key, const DateTime& until, bool isSpan = false);
    /// The clock has been put on by seconds that didn't pass, or back, as in the nights of summer time: what was put
    /// off for a span moves along.
    void MoveClock(int64_t seconds);

private:
    bool IsOnScreen(const PopupKey& key) const;
    void WaitFor(const PopupKey& key);
    void ForgetOld(const DateTime& now);
    void ForgetAhead(const DateTime& now);

    ShownPopups shown_;
    std::map<PopupKey, CTmReminder> popups_;
    std::multimap<int64_t, PopupKey> waiting_;  // by the second at which they are due
    std::vector<Popup> onScreen_;
    std::set<PopupKey> spans_;  // put off for a span since the start
};

/// How long a popup can be put off.
struct SnoozeChoice {
    const char* text;
    DateTime until;
    bool isSpan;  ///< counts minutes and hours; a day later or the start of an event is a time on the clock
};
/// The choices at `now`, shortest first, and the start of its event after them where that still lies ahead.
std::vector<SnoozeChoice> SnoozeChoices(const CTmReminder& reminder, const DateTime& now);
/// The place of the one that the button alone takes.
inline constexpr size_t kUsualSnooze = 1;

/// The texts of a popup. Empty ones are left out.
struct PopupText {
    std::string label;  ///< the event's, or "Reminder"
    std::string time;   ///< when the event starts, or when the reminder was set for
    std::string late;   ///< "Missed at ..." for a late one
    std::string message, description;
};
PopupText TextOf(const Popup& popup, const DateTime& now);

}  // namespace lore
