#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "ports/read_context.h"

namespace lore {

/// How a reminder reaches the user. On disk; never change.
enum class ReminderType : int32_t { Popup = 0, Email = 1, TextMessage = 2 };

/// A message that is to reach the user at a set moment. It belongs to an event, or to none (a reminder for a day).
struct CTmReminder {
    int32_t Type = 0;            ///< a ReminderType as stored; a damaged file may hold any number
    int32_t PriorMinutes = 0;    ///< chosen offset before the event in minutes, -1 for another time
    int32_t ServerId = -1;       ///< the number that the server gave, -1 for none; popups always have -1
    int32_t ProviderIndex = -1;  ///< row of the provider table, for text messages
    bool ServerDone = false;     ///< the last server operation for this record succeeded
    DateTime ServerSendTime;     ///< moment of sending on the server's clock
    DateTime SendTime;           ///< moment of sending on this computer's clock
    DateTime EventStart;         ///< the event's Start when it was made, or saved last
    std::string ReminderId;      ///< GUID text
    std::string SendTo;          ///< address for the server
    std::string EmailAddress;    ///< as entered
    std::string PhoneNumber;     ///< as entered, hyphens kept
    std::string EventId;         ///< empty for a reminder of a day
    std::string Message;
    std::string EventLabel, EventDescription;  ///< copies of the event's texts
};

/// Calls `visit(name, field)` for each stored field, in the order of the file.
template <typename Visitor, typename Reminder>
void VisitReminderFields(Reminder& reminder, Visitor&& visit) {
    visit("Type", reminder.Type);
    visit("PriorMinutes", reminder.PriorMinutes);
    visit("ServerId", reminder.ServerId);
    visit("ProviderIndex", reminder.ProviderIndex);
    visit("ServerDone", reminder.ServerDone);
    visit("ServerSendTime", reminder.ServerSendTime);
    visit("SendTime", reminder.SendTime);
    visit("EventStart", reminder.EventStart);
    visit("ReminderId", reminder.ReminderId);
    visit("SendTo", reminder.SendTo);
    visit("EmailAddress", reminder.EmailAddress);
    visit("PhoneNumber", reminder.PhoneNumber);
    visit("EventId", reminder.EventId);
    visit("Message", reminder.Message);
    visit("EventLabel", reminder.EventLabel);
    visit("EventDescription", reminder.EventDescription);
}

/// All defaults, the three dates at the context's local time, without an id.
void ResetReminder(CTmReminder& reminder, const ReadContext& context);
/// A reminder with the defaults and a new id.
CTmReminder NewReminder(const ReadContext& context);
/// Lets a reminder of an event go out so many minutes, from 0 on, before the start that it knows.
void SendBeforeStart(CTmReminder& reminder, int32_t minutes);

/// "Popup", "Email" or "TxtMsg"; empty for a number that is no type.
const char* ReminderTypeName(int32_t type);
/// True for a type that the server sends: e-mail and text message.
bool IsServerReminder(const CTmReminder& reminder);

/// True unless id, type, offset, event, message, the three dates, server number, address and server flag all agree.
bool ReminderDiffers(const CTmReminder& a, const CTmReminder& b);
/// The comparison across the events of one series: type, offset, address, message and the span from sending to start.
bool SameReminder(const CTmReminder& a, const CTmReminder& b);

}  // namespace lore
