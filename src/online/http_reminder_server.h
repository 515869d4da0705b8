#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "calendar/calendar_world.h"
#include "ports/background.h"
#include "ports/http_transport.h"
#include "ports/reminder_server.h"

namespace lore {

/// How long the reminder server may take for an answer, and how long that may be.
struct ReminderLimits {
    std::chrono::milliseconds test{10'000};  ///< for the test of the connection
    std::chrono::milliseconds call{30'000};  ///< for anything else
    size_t reply = size_t{64} * 1024;        ///< bytes
};

/// What an answer says.
struct ReminderAnswer {
    int32_t result = 0;                   ///< above 0 is success
    DateTime time = DateTime::Invalid();  ///< the server's clock
};
/// Reads the body of an answer. Nothing if it isn't a JSON object, or a value in it isn't of the form agreed.
std::optional<ReminderAnswer> ReadReminderAnswer(std::string_view body);

/// The reminder server over HTTP: each function is a request with a JSON object, as docs/reminder-server.md has it.
class HttpReminderServer : public ReminderServer {
public:
    /// @param address http address of the server
    /// @param user by what the server knows the user
    /// @param background where calls run so that windows paint meanwhile; may be null
    HttpReminderServer(HttpTransport& transport, std::string address, std::string user,
                       Background* background = nullptr, const ReminderLimits& limits = {});

    bool IsSetUp() const override { return true; }
    int32_t TestServerConnection() override;
    DateTime GetServerTime() override;
    /// Once the user has stopped a call, this and the next two fail at once until the connection is tested again.
    int32_t InsertUpdateNotification(const ReminderNotification& notification) override;
    int32_t SetDeleteNotification(int32_t serverId) override;
    void SendTestTxtMsg(const std::string& address) override;

private:
    class Call;
    ReminderAnswer Ask(const Call& call, std::chrono::milliseconds longest);

    HttpTransport& transport_;
    std::string address_, user_;
    Background* background_;
    ReminderLimits limits_;
    bool stopped_ = false;
};

/// The server that the settings name; NoReminderServer where they name none, where what they name is no address of
/// http, or where `transport` is null. Without a user's name in the settings the identity of the installation stands
/// for one.
std::unique_ptr<ReminderServer> MakeReminderServer(const ReminderSetup& setup, const Settings& settings,
                                                   HttpTransport* transport, Background* background = nullptr);

}  // namespace lore
