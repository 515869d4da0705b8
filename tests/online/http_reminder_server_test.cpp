#include "online/http_reminder_server.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "online/http_client.h"
#include "support/data_files.h"
#include "support/http_server.h"
#include "support/memory_store.h"
#include "support/read_world.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

using namespace std::chrono_literals;
using Json = nlohmann::json;

constexpr ReminderLimits kQuick{.test = 400ms, .call = 400ms, .reply = 1000};
const ReminderNotification kMail{.serverId = 41,
                                 .type = "Email",
                                 .reminderId = "{R}",
                                 .sendTime = "03/14/2026 10:00:00",
                                 .sendTo = "a@example.com",
                                 .message =
                                     "REMINDER: \x93"
                                     "caf\xE9\x94\n\nMESSAGE:"};

std::string Reply(const std::string& body, const std::string& status = "200 OK") {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

class Reminders : public testing::Test {
protected:
    HttpReminderServer Proxy(Background* background = nullptr) {
        return {client_, server_.Url("/r?x=1"), "ann", background, kQuick};
    }
    int32_t Insert(HttpAnswer answer) {
        server_.Add(std::move(answer));
        return Proxy().InsertUpdateNotification(kMail);
    }

    HttpServer server_;
    HttpClient client_{{.connect = 400ms, .silence = 400ms}};
};

TEST_F(Reminders, SendEachFunctionWithItsFields) {
    HttpReminderServer proxy = Proxy();
    server_.Add(200, R"({"result": 1})");
    EXPECT_EQ(proxy.TestServerConnection(), 1);
    server_.Add(200, R"({"time": "03/14/2026 08:26:53"})");
    EXPECT_EQ(proxy.GetServerTime(), DateTime(2026, 3, 14, 8, 26, 53));
    server_.Add(200, R"({"result": 2147483647, "error": null, "more": {"a": [1, {"b": 2}]}})");
    EXPECT_EQ(proxy.InsertUpdateNotification(kMail), 2147483647);
    server_.Add(200, R"({"result": 1})");
    EXPECT_EQ(proxy.SetDeleteNotification(42), 1);
    server_.Add(200, "");
    proxy.SendTestTxtMsg("5551234567@gate.example");

    const Json expected[] = {
        {{"function", "TestServerConnection"}},
        {{"function", "GetServerTime"}},
        {{"function", "InsertUpdateNotification"},
         {"serverId", 41},
         {"type", "Email"},
         {"reminderId", "{R}"},
         {"sendTime", "03/14/2026 10:00:00"},
         {"sendTo", "a@example.com"},
         {"message", "REMINDER: \u201Ccaf\u00E9\u201D\n\nMESSAGE:"}},
        {{"function", "SetDeleteNotification"}, {"serverId", 42}},
        {{"function", "SendTestTxtMsg"}, {"sendTo", "5551234567@gate.example"}},
    };
    const std::vector<std::string> requests = server_.Requests();
    ASSERT_EQ(requests.size(), std::size(expected));
    for (size_t i = 0; i < requests.size(); ++i) {
        const size_t end = requests[i].find("\r\n\r\n");
        Json body = expected[i];
        body["protocol"] = 1;
        body["user"] = "ann";
        EXPECT_EQ(Json::parse(requests[i].substr(end + 4)), body);
        EXPECT_EQ(requests[i].substr(0, end),
                  "POST /r?x=1 HTTP/1.1\r\nHost: " + server_.Host() +
                      "\r\nContent-Length: " + std::to_string(requests[i].size() - end - 4) +
                      "\r\nContent-Type: application/json\r\nAccept: application/json");
    }
}

TEST_F(Reminders, TakeAnythingElseForAFailure) {
    const std::pair<const char*, HttpAnswer> bad[] = {
        {"half an answer", {Reply("{\"result\": 7")}},
        {"another status", {Reply("{\"result\": 7}", "500 Internal Server Error")}},
        {"accepted, not done", {Reply("{\"result\": 7}", "202 Accepted")}},
        {"refused", {Reply(R"({"result": 0, "error": "unknown user"})")}},
        {"below zero", {Reply("{\"result\": -3}")}},
        {"a field that is missing", {Reply("{\"number\": 7}")}},
        {"a number as text", {Reply("{\"result\": \"7\"}")}},
        {"true", {Reply("{\"result\": true}")}},
        {"a broken number", {Reply("{\"result\": 7.5}")}},
        {"above what an id can be", {Reply("{\"result\": 2147483648}")}},
        {"that would wrap to 1", {Reply("{\"result\": 18446744073709551615}")}},
        {"far below", {Reply("{\"result\": -9223372036854775808}")}},
        {"the field deeper down", {Reply("{\"answer\": {\"result\": 7}}")}},
        {"a list", {Reply("[7]")}},
        {"a number alone", {Reply("7")}},
        {"a page", {Reply("<html><body>Please log in</body></html>")}},
        {"bytes that are no text", {Reply("{\"result\": 7, \"x\": \"\xFF\xFE\"}")}},
        {"more behind it", {Reply("{\"result\": 7} {\"result\": 8}")}},
        {"too long", {Reply("{\"result\": 7}" + std::string(1000, ' '))}},
        {"endlessly nested", {Reply(std::string(900, '['))}},
    };
    for (const auto& [what, answer] : bad)
        EXPECT_EQ(Insert(answer), 0) << what;
    EXPECT_EQ(server_.Left(), 0u);
    for (const char* const time :
         {"", "2026-03-14 08:26:53", "03/14/2026", "3/14/2026 08:26:53", "13/14/2026 08:26:53", "02/30/2026 08:26:53",
          "03/14/2026 24:00:00", "03/14/2026 08:26:5x", "03/14/2026 08:26:53Z"}) {
        server_.Add(200, Json{{"time", time}}.dump());
        EXPECT_FALSE(Proxy().GetServerTime().IsValid()) << time;
    }
}

TEST_F(Reminders, GiveUpInTimeOnASilentServerAndOnOneThatDrips) {
    const HttpAnswer slow[] = {{.bytes = Reply("{}").substr(0, 12), .closes = false},
                               {.bytes = Reply("{\"result\": 7}" + std::string(500, ' ')), .piece = 1, .pause = 50}};
    for (const HttpAnswer& answer : slow) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Insert(answer), 0);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    }
    std::string dead;
    { dead = HttpServer().Url(); }
    EXPECT_EQ(HttpReminderServer(client_, dead, "ann", nullptr, kQuick).TestServerConnection(), 0);
}

TEST(ReminderAnswer, IsReadWithoutHarmWhateverTheCorpusHolds) {
    size_t read = 0, refused = 0;
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "reminder"))
        (ReadReminderAnswer(BytesOf(path)) ? read : refused) += 1;
    EXPECT_GE(read, 4u);
    EXPECT_GE(refused, 4u);
}

TEST_F(Reminders, AskNothingMoreOnceTheUserHasStoppedACall) {
    ScriptedBackground background;
    background.stopsAt = 1;
    HttpReminderServer proxy = Proxy(&background);
    server_.Add(200, "{\"result\": 1}");
    EXPECT_EQ(proxy.TestServerConnection(), 1);
    EXPECT_EQ(proxy.SetDeleteNotification(1), 0);
    EXPECT_EQ(proxy.InsertUpdateNotification(kMail), 0);
    EXPECT_FALSE(proxy.GetServerTime().IsValid());
    server_.Add(200, "{\"result\": 1}");
    EXPECT_EQ(proxy.TestServerConnection(), 1);
    server_.Add(200, "{\"result\": 5}");
    EXPECT_EQ(proxy.InsertUpdateNotification(kMail), 5);
    EXPECT_EQ(server_.Left(), 0u);
    EXPECT_THAT(background.texts, testing::Each("Waiting for the reminder server...."));
}

TEST_F(Reminders, AreWhatTheSettingsName) {
    Settings settings;
    settings.Set(Option::LocalGUID, std::string("{LOCAL}"));
    for (const char* const address : {"", "  ", "reminders.example", "https://reminders.example/", "file:///tmp/x"}) {
        MemoryStore store;
        store.Set("Reminders", "Server", address);
        EXPECT_FALSE(MakeReminderServer(LoadReminderSetup(store), settings, &client_)->IsSetUp()) << address;
    }
    for (const auto& [user, sent] : {std::pair("", "{LOCAL}"), std::pair(" bob ", "bob")}) {
        MemoryStore store;
        store.Set("Reminders", "Server", " " + server_.Url() + " ");
        store.Set("Reminders", "User", user);
        EXPECT_FALSE(MakeReminderServer(LoadReminderSetup(store), settings, nullptr)->IsSetUp());
        const auto made = MakeReminderServer(LoadReminderSetup(store), settings, &client_);
        ASSERT_TRUE(made->IsSetUp());
        server_.Add(200, "{\"result\": 3}");
        EXPECT_EQ(made->TestServerConnection(), 3);
        EXPECT_NE(server_.Requests().back().find("\"user\":\"" + std::string(sent) + "\""), std::string::npos);
    }
}

}  // namespace
}  // namespace lore
