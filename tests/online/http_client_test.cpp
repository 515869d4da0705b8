#include "online/http_client.h"

#include <chrono>
#include <fstream>

#include "online/http_address.h"
#include "support/each.h"
#include "support/http_server.h"
#include "support/matchers.h"

namespace lore {
namespace {

using namespace std::chrono_literals;

HttpRequest Request(const std::string& url) {
    return {.url = url, .fields = {{"Content-Type", "text/plain"}, {"SOAPAction", "\"urn:x/Do\""}}, .body = "what?"};
}

HttpLimits Quick() {
    return {.connect = 400ms, .silence = 400ms, .body = 1000};
}

HttpReply Ask(HttpServer& server, const HttpAnswer& answer, const HttpLimits& limits = Quick()) {
    server.Add(answer);
    return HttpClient(limits).Send(Request(server.Url("/path?q=1")), {});
}

std::string Head(const std::string& fields, int status = 200) {
    return "HTTP/1.1 " + std::to_string(status) + " OK\r\n" + fields + "\r\n";
}

const std::tuple<const char*, std::string, int, std::string> kForms[] = {
    {"ByLength", Head("Content-Length: 5\r\n") + "hello", 200, "hello"},
    {"ByLengthWithMoreBehind", Head("Content-Length: 5\r\n") + "hello and more", 200, "hello"},
    {"ByClose", Head("Server: x\r\n") + "hello\r\n\r\nthere", 200, "hello\r\n\r\nthere"},
    {"InChunks", Head("Transfer-Encoding: chunked\r\n") + "2\r\nhe\r\n3;name=value\r\nllo\r\n0\r\n\r\n", 200, "hello"},
    {"InChunksWithTrailers",
     Head("Trailer: X-Sum, X-Other\r\nTransfer-Encoding: chunked\r\n") +
         "A\r\n0123456789\r\n0\r\nX-Sum: 12\r\nX-Other: a\r\n\r\n",
     200, "0123456789"},
    {"ChunksBeforeLength", Head("Transfer-Encoding: CHUNKED\r\n") + "1\r\nx\r\n0\r\n\r\n", 200, "x"},
    {"EmptyByLength", Head("Content-Length: 0\r\n", 202), 202, ""},
    {"WithoutContent", Head("", 204), 204, ""},
    {"OlderVersion", "HTTP/1.0 200 OK\r\n\r\nold", 200, "old"},
    {"ServerError", Head("Content-Length: 4\r\n", 500) + "dead", 500, "dead"},
    {"BehindInterimReplies", Head("", 100) + Head("", 102) + Head("Content-Length: 2\r\n") + "ok", 200, "ok"},
    {"OfTheLargestSize", Head("") + std::string(1000, 'x'), 200, std::string(1000, 'x')},
    {"RedirectThatLeadsNowhere", Head("Content-Length: 0\r\n", 302), 302, ""},
};

TEST(HttpClient, ReadsEachFormOfAReplyWholeOrOneByteATime) {
    for (const auto& [name, bytes, status, body] : kForms) {
        SCOPED_TRACE(name);
        HttpServer server;
        for (const size_t piece : {size_t{0}, size_t{1}}) {
            const HttpReply reply = Ask(server, {bytes, piece});
            EXPECT_EQ(reply.failure, HttpFailure::None) << piece;
            EXPECT_EQ(reply.body, body) << piece;
            EXPECT_EQ(reply.status, status) << piece;
        }
    }
}

TEST(HttpClient, ReadsALengthOrChunksWithoutWaitingForTheClose) {
    HttpServer server;
    for (const char* const bytes :
         {"Content-Length: 2\r\n\r\nok", "Transfer-Encoding: chunked\r\n\r\n2\r\nok\r\n0\r\n\r\n"}) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Ask(server, {.bytes = std::string("HTTP/1.1 200 OK\r\n") + bytes, .closes = false}).body, "ok");
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 300ms);
    }
}

using Bad = std::tuple<const char*, HttpAnswer, HttpFailure>;

const Bad kBad[] = {
    {"ClosedAtOnce", {}, HttpFailure::NoReply},
    {"Reset", {.bytes = Head("Content-Length: 5\r\n") + "he", .resets = true}, HttpFailure::NoReply},
    {"HalfByLength", {Head("Content-Length: 5\r\n") + "hell"}, HttpFailure::NoReply},
    {"HalfAHead", {"HTTP/1.1 200 OK\r\nContent-Le"}, HttpFailure::NoReply},
    {"HalfAChunk", {Head("Transfer-Encoding: chunked\r\n") + "5\r\nhel"}, HttpFailure::NoReply},
    {"NoLastChunk", {Head("Transfer-Encoding: chunked\r\n") + "5\r\nhello\r\n"}, HttpFailure::NoReply},
    {"ChunkThatIsNone", {Head("Transfer-Encoding: chunked\r\n") + "what\r\nhello\r\n0\r\n\r\n"}, HttpFailure::NoReply},
    {"LengthThatIsNone", {Head("Content-Length: many\r\n") + "hello"}, HttpFailure::NoReply},
    {"Garbage", {std::string("\x00\x01\xFF garbage \r\n\r\n", 16)}, HttpFailure::NoReply},
    {"AnotherProtocol", {"220 mail.example ESMTP\r\n\r\n"}, HttpFailure::NoReply},
    {"EndlessHead",
     {"HTTP/1.1 200 OK\r\n" + Repeated("X: " + std::string(1000, 'x') + "\r\n", 200)},
     HttpFailure::NoReply},
    {"EndlessLine", {"HTTP/1.1 200 OK\r\nX: " + std::string(300000, 'x')}, HttpFailure::NoReply},
    {"EndlessChunkLine",
     {Head("Transfer-Encoding: chunked\r\n") + "5;" + std::string(300000, 'x')},
     HttpFailure::NoReply},
    {"EndlessInterimReplies", {Repeated(Head("", 100), 50)}, HttpFailure::NoReply},
    {"TooLargeByLength", {Head("Content-Length: 1001\r\n") + std::string(1001, 'x')}, HttpFailure::TooLarge},
    {"GiantLength", {Head("Content-Length: 18446744073709551614\r\n") + "x"}, HttpFailure::TooLarge},
    {"LengthBeyondAllNumbers", {Head("Content-Length: 18446744073709551616\r\n") + "x"}, HttpFailure::NoReply},
    {"TooLargeInChunks",
     {Head("Transfer-Encoding: chunked\r\n") + Repeated("64\r\n" + std::string(100, 'x') + "\r\n", 11)},
     HttpFailure::TooLarge},
    {"TooLargeByClose", {Head("") + std::string(1001, 'x')}, HttpFailure::TooLarge},
};

TEST(HttpClient, FailsOnBadReplies) {
    for (const auto& [name, answer, failure] : kBad) {
        SCOPED_TRACE(name);
        HttpServer server;
        const HttpReply reply = Ask(server, answer);
        EXPECT_EQ(reply.failure, failure);
        EXPECT_EQ(reply.status, 0);
        EXPECT_EQ(reply.body, "");
    }
}

/// The most memory that this process has held since the last call of this, in bytes; 0 if the system doesn't tell.
size_t PeakSinceLastTime() {
    size_t peak = 0;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            peak = std::stoul(line.substr(6)) << 10;
    std::ofstream("/proc/self/clear_refs") << "5";
    return peak;
}

/// The build with sanitizers keeps what is freed for a while.
#if defined(__SANITIZE_ADDRESS__) || defined(__clang__)
constexpr bool kKeepsFreedMemory = true;
#else
constexpr bool kKeepsFreedMemory = false;
#endif

TEST(HttpClient, HoldsLittleOfAReplyOfTenGigabytes) {
    const std::string block(1'000'000, 'x');
    constexpr uint64_t kTimes = 10'000;
    const std::string chunk = "F4240\r\n" + block + "\r\n";
    const Bad endless[] = {
        {"ByClose", {.bytes = Head(""), .again = block, .times = kTimes}, HttpFailure::TooLarge},
        {"InChunks",
         {.bytes = Head("Transfer-Encoding: chunked\r\n"), .again = chunk, .times = kTimes},
         HttpFailure::TooLarge},
        {"InTheHead",
         {.bytes = "HTTP/1.1 200 OK\r\n", .again = "X: y\r\n", .times = 1000 * kTimes},
         HttpFailure::NoReply},
    };
    for (const auto& [name, answer, failure] : endless) {
        SCOPED_TRACE(name);
        HttpServer server;
        PeakSinceLastTime();
        const size_t before = PeakSinceLastTime();
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Ask(server, answer, {}).failure, failure);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 11s);
        const size_t most = before + (kKeepsFreedMemory ? size_t{512} : size_t{32}) * (size_t{1} << 20);
        EXPECT_LT(PeakSinceLastTime(), most);
    }
}

TEST(HttpClient, GivesUpOnSilenceAndNotOnSlowness) {
    HttpServer server;
    const std::string bytes = Head("Content-Length: 8\r\n") + "12345678";
    EXPECT_EQ(Ask(server, {.bytes = bytes, .piece = 8, .pause = 100}).body, "12345678");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Ask(server, {.bytes = bytes.substr(0, 20), .closes = false}).failure, HttpFailure::NoReply);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 400ms);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
}

TEST(HttpClient, GivesUpOnAServerThatDoesntReadOrDoesntTakeTheConnection) {
    HttpServer server;  // serves one at a time, and is held by the first client
    server.Add({.bytes = "", .closes = false});
    std::jthread first([&] { HttpClient({.silence = 1500ms}).Send(Request(server.Url()), {}); });
    while (server.Requests().empty())
        std::this_thread::sleep_for(5ms);
    HttpRequest large = Request(server.Url());
    large.body = std::string(size_t{32} << 20, 'x');
    EXPECT_EQ(HttpClient(Quick()).Send(large, {}).failure, HttpFailure::NoReply);
}

TEST(HttpClient, TellsThatThereIsNoConnection) {
    std::string dead;
    { dead = HttpServer().Url(); }
    HttpServer server;
    server.Add(302, "", "Location: " + dead + "\r\n");
    for (const std::string& url : {dead, std::string("http://no-such-host.invalid/"), server.Url()})
        EXPECT_EQ(HttpClient(Quick()).Send(Request(url), {}).failure, HttpFailure::NoConnection) << url;
}

TEST(HttpClient, SendsNothingThatWouldBreakTheRequest) {
    HttpServer server;
    HttpClient client;
    for (const char* const url :
         {"https://127.0.0.1/", "ftp://127.0.0.1/", "127.0.0.1", "", "http://", "http://a b/", "http://user@127.0.0.1/",
          "http://127.0.0.1:0/", "http://127.0.0.1:65536/", "http://127.0.0.1:x/", "http://127.0.0.1/\r\nX: y"})
        EXPECT_EQ(client.Send(Request(url), {}).failure, HttpFailure::BadAddress) << url;
    HttpRequest broken = Request(server.Url());
    broken.fields.emplace_back("X", "a\r\nInjected: b");
    EXPECT_EQ(client.Send(broken, {}).failure, HttpFailure::BadAddress);
    EXPECT_TRUE(server.Requests().empty());
}

TEST(HttpClient, FollowsRedirectsWithTheSameRequest) {
    HttpServer server, other;
    server.Add(301, "moved", "Location: /a/b?c=d\r\n");
    server.Add({"HTTP/1.1 302 Found\r\nLocation: next#part\r\n\r\nwithout end", 0, 0, false});
    server.Add(303, "", "Location: //" + server.Host() + "/third\r\n");
    server.Add(307, "", "Location: ?q\r\n");
    server.Add(308, "", "Location: " + other.Url("/there") + "\r\n");
    other.Add(200, "arrived");
    const HttpReply reply = HttpClient(Quick()).Send(Request(server.Url("/")), {});
    EXPECT_EQ(reply.failure, HttpFailure::None);
    EXPECT_EQ(reply.body, "arrived");
    std::vector<std::string> requests = server.Requests();
    requests.push_back(other.Requests().at(0));
    const char* const targets[] = {"/", "/a/b?c=d", "/a/next", "/third", "/third?q", "/there"};
    ASSERT_EQ(requests.size(), std::size(targets));
    for (size_t i = 0; i < requests.size(); ++i) {
        EXPECT_TRUE(requests[i].starts_with(std::string("POST ") + targets[i] + " HTTP/1.1\r\nHost: ")) << requests[i];
        EXPECT_TRUE(requests[i].ends_with("\r\nSOAPAction: \"urn:x/Do\"\r\n\r\nwhat?")) << requests[i];
    }
}

TEST(HttpClient, RefusesRedirectsToOtherSchemesAndCircles) {
    for (const char* const to :
         {"https://127.0.0.1/", "file:///etc/passwd", "http://", "http://u@127.0.0.1/", "/a b"}) {
        HttpServer server;
        server.Add(302, "", std::string("Location: ") + to + "\r\n");
        EXPECT_EQ(HttpClient(Quick()).Send(Request(server.Url()), {}).failure, HttpFailure::BadRedirect) << to;
        EXPECT_EQ(server.Requests().size(), 1u);
    }
    HttpServer server;
    for (int i = 0; i < 8; ++i)
        server.Add(302, "", "Location: /again\r\n");
    EXPECT_EQ(HttpClient(Quick()).Send(Request(server.Url()), {}).failure, HttpFailure::BadRedirect);
    EXPECT_EQ(server.Requests().size(), 6u);
}

TEST(HttpClient, StopsSoonWhenAsked) {
    HttpServer server;
    server.Add({.bytes = Head("Content-Length: 5\r\n") + "he", .closes = false});
    std::stop_source stop;
    std::jthread later([&] {
        std::this_thread::sleep_for(100ms);
        stop.request_stop();
    });
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(HttpClient().Send(Request(server.Url()), stop.get_token()).failure, HttpFailure::Stopped);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
}

/// "host field|target", or nothing.
std::string Shown(const std::optional<HttpAddress>& address) {
    return address ? address->HostField() + "|" + address->target : "";
}

TEST(HttpAddress, NamesThePortUnlessItIs80) {
    const std::pair<const char*, const char*> cases[] = {{"http://example.test:8080/a", "example.test:8080|/a"},
                                                         {"http://example.test:80/a", "example.test|/a"},
                                                         {"http://example.test:/a", "example.test|/a"},
                                                         {"http://example.test:0080/a", "example.test|/a"},
                                                         {"HTTP://example.test", "example.test|/"},
                                                         {"http://example.test?x=1#y", "example.test|/?x=1"},
                                                         {"http://[::1]:81/a", "[::1]:81|/a"},
                                                         {"http://[::1]/a", "[::1]|/a"}};
    for (const auto& [url, shown] : cases)
        EXPECT_EQ(Shown(ParseHttpAddress(url)), shown) << url;
    for (const char* const url :
         {"http://[::1/a", "http://[::1]x/a", "http:/example.test/", "http://:80/", "http://example.test:99999/",
          "http://example.test:-1/", "http://ex\xC3\xA4mple.test/"})
        EXPECT_FALSE(ParseHttpAddress(url)) << url;
}

TEST(HttpAddress, FollowsALocationFromWhereItWasGiven) {
    const HttpAddress from = *ParseHttpAddress("http://[::1]:81/a/b?c=/d");
    const std::pair<const char*, const char*> cases[] = {{"http://other.test/x", "other.test|/x"},
                                                         {"//other.test:80/x", "other.test|/x"},
                                                         {"/x?y", "[::1]:81|/x?y"},
                                                         {"x", "[::1]:81|/a/x"},
                                                         {"?x", "[::1]:81|/a/b?x"},
                                                         {" /x ", "[::1]:81|/x"},
                                                         {"x?u=http://y", "[::1]:81|/a/x?u=http://y"},
                                                         {"", ""},
                                                         {"mailto:x", ""},
                                                         {"https://other.test/", ""}};
    for (const auto& [location, shown] : cases)
        EXPECT_EQ(Shown(FollowLocation(from, location)), shown) << location;
}

}  // namespace
}  // namespace lore
