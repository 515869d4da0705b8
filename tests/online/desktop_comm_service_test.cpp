#include "online/desktop_comm_service.h"

#include <functional>
#include <gtest/gtest.h>

#include "online/http_client.h"
#include "online/online_config.h"
#include "support/http_server.h"
#include "support/memory_store.h"

namespace lore {
namespace {

constexpr char kNamespace[] = "http://service.test/ns/";

std::string Response(const std::string& operation, const std::string& result) {
    return "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\" "
           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"><soap:Body><" +
           operation + "Response xmlns=\"" + kNamespace + "\">" + result + "</" + operation +
           "Response></soap:Body></soap:Envelope>";
}

class Service : public testing::Test {
protected:
    DesktopCommService Proxy() { return {client_, {server_.Url(kServicePath), kNamespace}}; }

    HttpServer server_;
    HttpClient client_{{.connect = std::chrono::seconds(1), .silence = std::chrono::seconds(1)}};
};

TEST_F(Service, SendsExactlyTheseBytes) {
    server_.Add(200, Response("GetNoteBookInfo", ""));
    ASSERT_TRUE(Proxy().GetNoteBookInfo(42).Ok());
    const std::string body =
        "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\" "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" "
        "xmlns:soapenc=\"http://schemas.xmlsoap.org/soap/encoding/\"><soap:Body>"
        "<GetNoteBookInfo xmlns=\"http://service.test/ns/\"><NoteBookID>42</NoteBookID></GetNoteBookInfo>"
        "</soap:Body></soap:Envelope>";
    EXPECT_EQ(server_.Requests().at(0), "POST /DatabaseComServices/DesktopCommService.asmx HTTP/1.1\r\nHost: " +
                                            server_.Host() + "\r\nContent-Length: " + std::to_string(body.size()) +
                                            "\r\nContent-Type: text/xml; charset=utf-8\r\nAccept: text/xml\r\n"
                                            "SOAPAction: \"http://service.test/ns/GetNoteBookInfo\"\r\n"
                                            "User-Agent: Microsoft-ATL-Native/8.00\r\n\r\n" +
                                            body);
}

/// Those of the other operations are seen in the flows that call them.
TEST_F(Service, SendsTheArgumentsOfOperationsThatNoFlowCalls) {
    DesktopCommService service = Proxy();
    const std::tuple<std::string, std::string, std::function<bool()>> calls[] = {
        {"ClearOnlineNoteBookLinks", "<syncGUID>{S}</syncGUID><desktopGUID>{D}</desktopGUID>",
         [&] { return service.ClearOnlineNoteBookLinks("{S}", "{D}").Ok(); }},
        {"ValidateUserSyncGUID", "<syncGUID>a &amp; b</syncGUID>",
         [&] { return service.ValidateUserSyncGUID("a & b").Ok(); }},
    };
    for (const auto& [operation, arguments, call] : calls) {
        server_.Add(200, Response(operation, ""));
        EXPECT_TRUE(call()) << operation;
        const std::string request = server_.Requests().back();
        EXPECT_NE(request.find("SOAPAction: \"http://service.test/ns/" + operation + "\"\r\n"), std::string::npos);
        EXPECT_NE(request.find("<soap:Body><" + operation + " xmlns=\"http://service.test/ns/\">" + arguments + "</" +
                               operation + "></soap:Body>"),
                  std::string::npos)
            << request;
    }
}

TEST_F(Service, ReadsTextsAndNumbersWithBlanksWithoutANameAndBeyondAscii) {
    DesktopCommService service = Proxy();
    server_.Add(200,
                Response("GetNoteBooksInfo",
                         "<GetNoteBooksInfoResult><noteBooksList><NoteBookInfo><name>Ren\xC3\xA9</name><databaseID> 5 "
                         "</databaseID></NoteBookInfo><NoteBookInfo><databaseID>6</databaseID>"
                         "<name xsi:nil=\"1\"/></NoteBookInfo></noteBooksList><foundUser>1</foundUser>"
                         "<newNoteBookID>-3</newNoteBookID></GetNoteBooksInfoResult>"));
    const auto books = service.GetNoteBooksInfo("{S}", true);
    ASSERT_TRUE(books.Ok() && books.result);
    EXPECT_TRUE(books.result->foundUser);
    EXPECT_EQ(books.result->newNoteBookID, -3);
    ASSERT_EQ(books.result->noteBooksList.size(), 2u);
    EXPECT_EQ(books.result->noteBooksList[0].databaseID, 5);
    EXPECT_EQ(books.result->noteBooksList[0].name, "Ren\xE9");
    EXPECT_EQ(books.result->noteBooksList[1].name, "");
    server_.Add(200, Response("ClearOnlineNoteBookLinks",
                              "<ClearOnlineNoteBookLinksResult>true</ClearOnlineNoteBookLinksResult>"));
    EXPECT_TRUE(service.ClearOnlineNoteBookLinks("{S}", "{D}").result.value_or(false));
}

TEST_F(Service, TellsSuccessWithoutResultFromEveryFailure) {
    const std::string fault =
        "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\"><soap:Body><soap:Fault>"
        "<faultcode>soap:Server</faultcode><faultstring>x</faultstring></soap:Fault></soap:Body></soap:Envelope>";
    const auto result = [](const std::string& fields) {
        return Response("GetNoteBookInfo", "<GetNoteBookInfoResult>" + fields + "</GetNoteBookInfoResult>");
    };
    const std::tuple<int, std::string, SoapError> cases[] = {
        {202, "", SoapError::None},
        {202, "anything", SoapError::None},
        {200, Response("GetNoteBookInfo", ""), SoapError::None},
        {200, fault, SoapError::Fault},
        {500, fault, SoapError::Fault},
        {500, result("<databaseID>1</databaseID>"), SoapError::Fault},
        {500, "<html>", SoapError::Reply},
        {200, "", SoapError::Reply},
        {200, Response("Other", ""), SoapError::Reply},
        {200, result("<databaseID>five</databaseID>"), SoapError::Reply},
        {200, result("<databaseID></databaseID>"), SoapError::Reply},
        {200, result("<databaseID xsi:nil=\"1\"/>"), SoapError::Reply},
        {200, result("<name>Bees</name>"), SoapError::Reply},
        {200, result(""), SoapError::Reply},
        {200, result("<databaseID>99999999999</databaseID>"), SoapError::Reply},
        {404, result(""), SoapError::Status},
        {201, result(""), SoapError::Status},
        {302, "", SoapError::Status},
    };
    for (const auto& [status, body, error] : cases) {
        server_.Add(status, body);
        const auto called = Proxy().GetNoteBookInfo(1);
        EXPECT_EQ(called.error, error) << status << " " << body;
        EXPECT_FALSE(called.result) << status << " " << body;
    }
    server_.Add(HttpAnswer{});
    EXPECT_EQ(Proxy().GetNoteBookInfo(1).error, SoapError::Reply);
    EXPECT_EQ(DesktopCommService(client_, {"", kNamespace}).GetNoteBookInfo(1).error, SoapError::Request);
    EXPECT_EQ(DesktopCommService(client_, {"https://x.test/", kNamespace}).GetNoteBookInfo(1).error,
              SoapError::Request);
    EXPECT_EQ(Proxy().ValidateUserSyncGUID("\x01").error, SoapError::RequestBody);
}

/// Notes what a request asks of the time, and has no reply.
class NotedTime : public HttpTransport {
public:
    HttpReply Send(const HttpRequest& request, const std::stop_token&) override {
        longest = request.longest;
        return {HttpFailure::NoReply, 0, {}};
    }
    std::chrono::milliseconds longest{0};
};

TEST(ServiceTime, IsBoundedHoweverSlowlyTheBytesCome) {
    NotedTime transport;
    DesktopCommService(transport, {"http://service.test/", kNamespace}).GetNoteBookInfo(1);
    EXPECT_GT(transport.longest, std::chrono::seconds(10));
    EXPECT_LE(transport.longest, std::chrono::minutes(1));
}

TEST(OnlineConfig, IsEmptyUntilSomebodySetsItAndCompletesWhatIsShort) {
    MemoryStore store;
    EXPECT_FALSE(LoadOnlineConfig(store).HasService());
    store.Set("Online", "Endpoint", " http://service.test:8080 ");
    EXPECT_FALSE(LoadOnlineConfig(store).HasService());
    store.Set("Online", "Namespace", "http://service.test/ns");
    EXPECT_TRUE(LoadOnlineConfig(store).HasService());
    EXPECT_EQ(LoadOnlineConfig(store).service.nameSpace, kNamespace);
    const std::pair<const char*, std::string> endpoints[] = {
        {"http://service.test:8080", std::string("http://service.test:8080") + kServicePath},
        {"http://service.test/", std::string("http://service.test") + kServicePath},
        {"http://service.test/other.asmx", "http://service.test/other.asmx"},
        {"service.test", "service.test"}};
    for (const auto& [given, used] : endpoints) {
        store.Set("Online", "Endpoint", given);
        EXPECT_EQ(LoadOnlineConfig(store).service.endpoint, used);
    }
}

}  // namespace
}  // namespace lore
