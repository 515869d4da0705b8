#pragma once

#include <cstdint>
#include <string>

#include "base/date_time.h"

namespace lore {

/// What the reminder server is to send.
struct ReminderNotification {
    int32_t serverId = -1;  ///< the server's number for the record, -1 for a new one
    std::string type;       ///< "Email" or "TxtMsg"
    std::string reminderId;
    std::string sendTime;  ///< "%m/%d/%Y %H:%M:%S" on the server's clock
    std::string sendTo;
    std::string message;
};

/// The server that sends reminders as e-mails and text messages. Its functions block, and never fail in another way
/// than by their results. Texts are bytes of the core.
class ReminderServer {
public:
    virtual ~ReminderServer() = default;
    /// False if no server is set up: then every function fails at once.
    virtual bool IsSetUp() const = 0;
    /// A short test of the connection: above 0 if the server answers.
    virtual int32_t TestServerConnection() = 0;
    /// The time on the server's clock; invalid if it can't be had.
    virtual DateTime GetServerTime() = 0;
    /// Creates or replaces a record: above 0 the server's number for it, otherwise a failure.
    virtual int32_t InsertUpdateNotification(const ReminderNotification& notification) = 0;
    /// Removes a record: above 0 is success.
    virtual int32_t SetDeleteNotification(int32_t serverId) = 0;
    virtual void SendTestTxtMsg(const std::string& address) = 0;
};

/// Where no server is set up.
class NoReminderServer : public ReminderServer {
public:
    bool IsSetUp() const override { return false; }
    int32_t TestServerConnection() override { return 0; }
    DateTime GetServerTime() override { return DateTime::Invalid(); }
    int32_t InsertUpdateNotification(const ReminderNotification&) override { return 0; }
    int32_t SetDeleteNotification(int32_t) override { return 0; }
    void SendTestTxtMsg(const std::string&) override {}
};

}  // namespace lore
