#include "calendar/server_reminders.h"

#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"

namespace lore {

namespace {

constexpr int kRetryPause = 800, kLastRetryPause = 500;  // milliseconds

constexpr char kNoConnection[] = "No Server Connection";
constexpr char kTryAgain[] =
    "Connection to server could not be established.\n\nTo update the Email or TextMsg reminders Lorebinder needs to "
    "connect to the server.\n\nEither:\n\n1. You are not connected to the internet.\nor\n2. The server is busy.\n\n"
    "Please check internet connection then hit \"Yes\" to try again, or hit \"No\" to cancel updating Email "
    "and TextMsg reminders.";
constexpr char kNotSetUp[] =
    "No reminder server is set up, so Email and TextMsg reminders can't be updated.\n\nTo use them, give the "
    "address of a reminder server in the settings file, section \"Reminders\", key \"Server\". Popup reminders "
    "work without it.";

constexpr char kProblem[] = "A connection problem with the server occurred and ";
constexpr char kAdvice[] =
    ".\n\nServer may be busy, please check internet connection and try again later.\n\n"
    "Please contact support if problem persists: ";

bool Answers(const CalendarWorld& world) {
    return world.server.TestServerConnection() > 0;
}

bool AnswersAfter(const CalendarWorld& world, int milliseconds) {
    world.wait(milliseconds);
    return Answers(world);
}

const char* TextOf(ReminderFailure failure) {
    switch (failure) {
        case ReminderFailure::NotAllUpdated:
            return "not all reminders could be updated";
        case ReminderFailure::NotAllSeriesUpdated:
            return "not all Emails or TextMgs could be updated";
        case ReminderFailure::NotAllRemoved:
            return "not all reminders could be removed from server";
        case ReminderFailure::DayNotCreated:
            return "the reminder could not be created";
        case ReminderFailure::DayNotUpdated:
            return "the reminder could not be updated";
        case ReminderFailure::DayNotDeleted:
            break;
    }
    return "the reminder could not be deleted";
}

}  // namespace

bool MayUseServer(const CalendarWorld& world) {
    if (!world.server.IsSetUp())
        world.prompts.Message(kNotSetUp, kNoConnection, PromptIcon::Warning);
    return world.server.IsSetUp();
}

ServerCheck CheckServer(const CalendarWorld& world, Report report) {
    const bool asks = report == Report::Shown;
    if (asks ? !MayUseServer(world) : !world.server.IsSetUp())
        return ServerCheck::NoAnswer;
    if (Answers(world) || AnswersAfter(world, kRetryPause))
        return ServerCheck::Answers;
    if (!asks || world.prompts.Ask(kTryAgain, kNoConnection) != PromptAnswer::Yes)
        return ServerCheck::NoAnswer;
    const bool answers = Answers(world) || AnswersAfter(world, kLastRetryPause);
    return answers ? ServerCheck::Answers : ServerCheck::TriedInVain;
}

DateTime ServerSendTimeOf(const DateTime& sendTime, const DateTime& now, const DateTime& serverTime) {
    const DateSpan ahead = SpanBetween(serverTime, now.PlusSeconds(-now.Second()));
    if (!sendTime.IsValid() || ahead.status != DateTime::Status::Valid)
        return DateTime::Invalid();
    const DateTime time = sendTime.PlusSeconds(-ahead.seconds);
    return time.IsValid() && time == time.Midnight() ? time.PlusSeconds(30) : time;
}

std::string ServerMessage(const CTmReminder& reminder) {
    if (reminder.Type == static_cast<int32_t>(ReminderType::TextMessage))
        return reminder.Message;
    return "REMINDER: " + reminder.SendTime.Format("%A, %B %d %Y") + " at " + ClockTime(reminder.SendTime) +
           "\n\nMESSAGE:\n\n" + reminder.Message;
}

bool RegisterOnServer(const CalendarWorld& world, CTmReminder& reminder) {
    reminder.ServerSendTime = ServerSendTimeOf(reminder.SendTime, world.clock.Now(), world.server.GetServerTime());
    if (!reminder.ServerSendTime.IsValid())
        return false;
    const int32_t number =
        world.server.InsertUpdateNotification({.serverId = reminder.ServerId,
                                               .type = ReminderTypeName(reminder.Type),
                                               .reminderId = reminder.ReminderId,
                                               .sendTime = reminder.ServerSendTime.Format("%m/%d/%Y %H:%M:%S"),
                                               .sendTo = reminder.SendTo,
                                               .message = ServerMessage(reminder)});
    if (number <= 0)
        return false;
    reminder.ServerId = number;
    reminder.ServerDone = true;
    return true;
}

bool RemoveFromServer(const CalendarWorld& world, const CTmReminder& reminder) {
    return reminder.ServerId <= 0 || world.server.SetDeleteNotification(reminder.ServerId) > 0;
}

void TellReminderFailure(const CalendarWorld& world, ReminderFailure failure) {
    world.prompts.Message(std::string(kProblem) + TextOf(failure) + kAdvice + world.setup.supportAddress,
                          "Reminder Update Failed", PromptIcon::Warning);
}

}  // namespace lore
