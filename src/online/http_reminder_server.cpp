#include "online/http_reminder_server.h"

#include <limits>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "online/http_address.h"

namespace lore {

namespace {

using Json = nlohmann::json;

constexpr int kProtocol = 1;
constexpr int kOk = 200;
constexpr char kWaiting[] = "Waiting for the reminder server....";

Json TextOf(std::string_view bytes) {
    return ToUtf8(bytes);
}

/// "11/25/2026 09:41:51". Invalid for any other form.
DateTime ParseServerTime(const std::string& text) {
    constexpr std::string_view kForm = "00/00/0000 00:00:00";
    if (text.size() != kForm.size())
        return DateTime::Invalid();
    for (size_t i = 0; i < kForm.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (kForm[i] == '0' ? !isDigit : text[i] != kForm[i])
            return DateTime::Invalid();
    }
    const auto number = [&](size_t at, size_t count) { return ParseInt(text.substr(at, count)); };
    return {number(6, 4), number(0, 2), number(3, 2), number(11, 2), number(14, 2), number(17, 2)};
}

}  // namespace

std::optional<ReminderAnswer> ReadReminderAnswer(std::string_view body) {
    // Nothing of an answer lies deeper than its fields; what does is dropped while it is read.
    const auto isShallow = [](int depth, Json::parse_event_t, const Json&) { return depth <= 1; };
    const Json json = Json::parse(body, isShallow, false);
    if (!json.is_object())
        return std::nullopt;
    ReminderAnswer answer;
    if (const auto result = json.find("result"); result != json.end()) {
        // Numbers that aren't whole, or don't fit, are none.
        if (!result->is_number_integer() ||
            (result->is_number_unsigned() &&
             result->get<uint64_t>() > static_cast<uint64_t>(std::numeric_limits<int32_t>::max())))
            return std::nullopt;
        const auto number = result->get<int64_t>();
        answer.result = number > 0 ? static_cast<int32_t>(number) : 0;
    }
    if (const auto time = json.find("time"); time != json.end()) {
        if (!time->is_string())
            return std::nullopt;
        answer.time = ParseServerTime(time->get_ref<const std::string&>());
    }
    return answer;
}

/// A function of the server with what it is called with.
class HttpReminderServer::Call {
public:
    explicit Call(const char* function) : json_{{"protocol", kProtocol}, {"function", function}} {}
    Call& With(const char* name, Json value) {
        json_[name] = std::move(value);
        return *this;
    }
    std::string Body(const std::string& user) const {
        Json json = json_;
        json["user"] = TextOf(user);
        return json.dump();
    }

private:
    Json json_;
};

HttpReminderServer::HttpReminderServer(HttpTransport& transport, std::string address, std::string user,
                                       Background* background, const ReminderLimits& limits)
    : transport_(transport),
      address_(std::move(address)),
      user_(std::move(user)),
      background_(background),
      limits_(limits) {}

ReminderAnswer HttpReminderServer::Ask(const Call& call, std::chrono::milliseconds longest) {
    if (stopped_)
        return {};
    const HttpRequest request{.url = address_,
                              .fields = {{"Content-Type", "application/json"}, {"Accept", "application/json"}},
                              .body = call.Body(user_),
                              .longest = longest};
    HttpReply reply;
    stopped_ =
        !RunBeside(background_, kWaiting, [&](const std::stop_token& stop) { reply = transport_.Send(request, stop); });
    if (stopped_ || reply.failure != HttpFailure::None || reply.status != kOk || reply.body.size() > limits_.reply)
        return {};
    return ReadReminderAnswer(reply.body).value_or(ReminderAnswer{});
}

int32_t HttpReminderServer::TestServerConnection() {
    stopped_ = false;
    return Ask(Call("TestServerConnection"), limits_.test).result;
}

DateTime HttpReminderServer::GetServerTime() {
    return Ask(Call("GetServerTime"), limits_.call).time;
}

int32_t HttpReminderServer::InsertUpdateNotification(const ReminderNotification& notification) {
    return Ask(Call("InsertUpdateNotification")
                   .With("serverId", notification.serverId)
                   .With("type", TextOf(notification.type))
                   .With("reminderId", TextOf(notification.reminderId))
                   .With("sendTime", TextOf(notification.sendTime))
                   .With("sendTo", TextOf(notification.sendTo))
                   .With("message", TextOf(notification.message)),
               limits_.call)
        .result;
}

int32_t HttpReminderServer::SetDeleteNotification(int32_t serverId) {
    return Ask(Call("SetDeleteNotification").With("serverId", serverId), limits_.call).result;
}

void HttpReminderServer::SendTestTxtMsg(const std::string& address) {
    Ask(Call("SendTestTxtMsg").With("sendTo", TextOf(address)), limits_.call);
}

std::unique_ptr<ReminderServer> MakeReminderServer(const ReminderSetup& setup, const Settings& settings,
                                                   HttpTransport* transport, Background* background) {
    const std::string address(Trim(setup.server));
    if (!transport || !ParseHttpAddress(address))
        return std::make_unique<NoReminderServer>();
    const std::string user(Trim(setup.user));
    return std::make_unique<HttpReminderServer>(*transport, address,
                                                user.empty() ? settings.Text(Option::LocalGUID) : user, background);
}

}  // namespace lore
