#pragma once

#include <functional>
#include <string>

#include "calendar/calendar_world.h"
#include "calendar/server_reminders.h"

namespace lore {

/// Carries a change of information over to the events of a series: label, description and colour where they have
/// changed, reminders where those have. Other fields stay, so that a member that was changed alone keeps its own
/// values. What the reminders say of their events is as these are then.
class SeriesWalk {
public:
    SeriesWalk(const CalendarWorld& world, const CTmEvent& changed, const CTmEvent& old);
    /// Walks over the events, and writes the reminders where they change. False, told, if these can't be read: nothing
    /// has changed then.
    bool Run(EventList& events);
    /// Puts the reminders back as far as they stand in the file, for events that could not be written.
    void TakeBack();

private:
    void UpdateTexts(CTmEvent& event) const;
    void Connect();
    void UpdateReminders(CTmEvent& event, const std::string& progressText);
    void WriteReminders(const EventList& events);
    bool TryOnServer(const std::string& progressText, int pause, const std::function<bool()>& change);

    const CalendarWorld& world_;
    const CTmEvent &changed_, &old_;
    bool remindersDiffer_;
    bool written_ = false;  // of the reminders
    ReminderList stored_, all_;
    ServerCheck check_ = ServerCheck::NoAnswer;
    bool serverFailed_ = false;  // an operation failed, or was left out in vain
};

}  // namespace lore
