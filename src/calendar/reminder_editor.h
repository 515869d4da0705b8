#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calendar/calendar_world.h"

namespace lore {

/// The texts of the reminder editor that change with the type. Empty ones are hidden.
struct ReminderLabels {
    const char *when, *messageGroup, *sendLine, *address, *hint;
};

/// A row of the list "Prior to Event:".
struct PriorTime {
    int32_t minutes;  ///< -1 for another time
    const char* text;
};

/// The reminder editor without its controls.
class ReminderEditor {
public:
    enum class Purpose { Event, Day, Calendar };

    /// @param purpose what the reminder is made for: an event, a day of the day dialog, or no day
    /// @param isNew the addresses begin as the last ones used
    ReminderEditor(const CalendarWorld& world, CTmReminder reminder, Purpose purpose, bool isNew);

    const char* Title() const { return isNew_ ? "Create Reminder" : "Edit Reminder"; }
    const CTmReminder& Reminder() const { return reminder_; }
    /// A reminder that is sent within 21 minutes can't be changed any more.
    bool IsLocked() const { return isLocked_; }
    /// Whether anything is another than when the editor was opened.
    bool HasChanged() const;

    ReminderType Type() const { return static_cast<ReminderType>(reminder_.Type); }
    void SetType(ReminderType type);
    const ReminderLabels& Labels() const;

    /// In characters.
    size_t MessageLimit() const;
    const std::string& Message() const { return reminder_.Message; }
    /// Keeps as many characters as the limit allows.
    void SetMessage(std::string_view message);

    /// E-mail address or phone number, by type; none for a popup.
    std::string Address() const;
    void SetAddress(const std::string& address);
    int Provider() const { return provider_; }
    void SetProvider(int provider) { provider_ = provider; }

    /// The rows of "Prior to Event:", "Other Time-->" first. Empty: the list is hidden.
    const std::vector<PriorTime>& PriorTimes() const { return priorTimes_; }
    size_t ChosenPrior() const { return chosenPrior_; }
    void ChoosePrior(size_t row);
    /// What stands beside the time instead of the list; empty with it.
    const char* DayLabel() const;

    const DateTime& SendTime() const { return reminder_.SendTime; }
    /// A date or time set by hand, in steps of ten minutes and between the bounds. False if it was too early: it is the
    /// earliest now.
    bool ChangeSendTime(const DateTime& time);
    DateTime EarliestSendTime() const { return earliest_; }
    static DateTime LatestSendDay() { return DateTime(2050, 1, 1); }
    /// "Monday,  Jan. 03 2011  at  9:10AM"
    std::string SendTimeText() const;
    /// "01/03/11    9:10AM"; empty without an event.
    std::string EventStartText() const;

    /// Sends a test message to the address, if it is valid.
    void SendTestMessage();
    /// True if the address is valid: the reminder is complete then, and the addresses are the last ones used.
    bool Save();

private:
    /// The reminder with the fields of the address as they stand.
    CTmReminder Current() const;
    bool TakeAddress();
    void RememberAddress() const;
    void FillPriorTimes();
    DateTime WithinBounds(const DateTime& time) const;

    const CalendarWorld& world_;
    CTmReminder reminder_;
    Purpose purpose_;
    bool isNew_, isLocked_;
    DateTime earliest_;
    std::string email_, phone_;
    int provider_;
    std::vector<PriorTime> priorTimes_;
    size_t chosenPrior_ = 0;
    CTmReminder opened_;
};

}  // namespace lore
