#include "online/http_client.h"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>

#include "online/http_address.h"

namespace lore {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;
using Clock = std::chrono::steady_clock;

constexpr size_t kBlock = 4096;                        // bytes read at a time
constexpr uint32_t kMostHead = 64 * 1024;              // bytes of a reply's head
constexpr size_t kMostUnread = size_t{2} * kMostHead;  // bytes that can wait for the rest of a line
constexpr int kMostInterim = 10;                       // replies such as "100 Continue" before the real one
constexpr std::chrono::milliseconds kLook{50};         // how soon a request to stop is seen

using Endpoints = std::vector<tcp::endpoint>;

/// The addresses of a host; none if it has none, or they don't come in time. The system's look-up can't be stopped, so
/// that it has a thread which may outlive the wait.
Endpoints LookUp(const HttpAddress& address, Clock::time_point until, const std::stop_token& stop) {
    auto promise = std::make_shared<std::promise<Endpoints>>();
    std::future<Endpoints> found = promise->get_future();
    const auto lookUp = [promise, host = address.host, port = address.port] {
        asio::io_context context;
        error_code error;
        Endpoints endpoints;
        for (const auto& entry : tcp::resolver(context).resolve(host, port, tcp::resolver::numeric_service, error))
            endpoints.push_back(entry.endpoint());
        promise->set_value(std::move(endpoints));
    };
    try {
        std::thread(lookUp).detach();
    } catch (const std::system_error&) {
        lookUp();  // no thread is to be had
    }
    while (found.wait_for(kLook) != std::future_status::ready) {
        if (stop.stop_requested() || Clock::now() >= until)
            return {};
    }
    return found.get();
}

std::string HeadOf(const HttpRequest& request, const HttpAddress& address) {
    std::string head = request.method + " " + address.target + " HTTP/1.1\r\n";
    head += "Host: " + address.HostField() + "\r\n";
    head += "Content-Length: " + std::to_string(request.body.size()) + "\r\n";
    for (const auto& [name, value] : request.fields)
        head.append(name).append(": ").append(value).append("\r\n");
    return head + "\r\n";
}

bool CanBeSent(const HttpRequest& request) {
    const auto breaks = [](const std::string& text) {
        return text.find_first_of(std::string_view("\r\n\0", 3)) != text.npos;
    };
    for (const auto& [name, value] : request.fields) {
        if (breaks(name) || breaks(value))
            return false;
    }
    return true;
}

bool IsRedirect(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

/// A reply while it comes in.
class IncomingReply {
public:
    explicit IncomingReply(size_t mostBody) : mostBody_(mostBody), unread_(kMostUnread) { Begin(); }

    /// Takes bytes; false once the reply is whole, or is none.
    bool Take(const char* bytes, size_t count) {
        const auto room = unread_.prepare(std::min(count, unread_.max_size() - unread_.size()));
        asio::buffer_copy(room, asio::buffer(bytes, count));
        unread_.commit(room.size());
        if (room.size() < count)
            return Fail(HttpFailure::NoReply);
        return Parse();
    }
    /// The connection has been closed.
    void End() {
        error_code error;
        if (parser_->got_some())
            parser_->put_eof(error);
        if (error || !parser_->is_done())
            Fail(HttpFailure::NoReply);
        else
            Finish();
    }
    HttpReply reply;
    std::string location;  ///< of a redirect

private:
    void Begin() {
        parser_.emplace();
        parser_->header_limit(kMostHead);
        parser_->body_limit(mostBody_);
        // One that grows holds its bytes twice; what isn't used takes no room.
        parser_->get().body().reserve(mostBody_);
        parser_->eager(false);  // an eager one goes on after a length over its limit
    }
    bool Fail(HttpFailure failure) {
        reply.failure = failure;
        return false;
    }
    bool Parse();
    bool Finish();

    size_t mostBody_;
    boost::beast::flat_buffer unread_;
    std::optional<http::response_parser<http::string_body>> parser_;
    int interim_ = 0;
};

bool IncomingReply::Parse() {
    while (unread_.size() > 0) {
        error_code error;
        unread_.consume(parser_->put(unread_.data(), error));
        if (error == http::error::need_more)
            return true;
        if (error)
            return Fail(error == http::error::body_limit ? HttpFailure::TooLarge : HttpFailure::NoReply);
        if (!parser_->is_header_done())
            continue;
        const int status = static_cast<int>(parser_->get().result_int());
        if (status >= 200 && (parser_->is_done() || IsRedirect(status)))
            return Finish();
        if (status >= 200 || !parser_->is_done())
            continue;
        if (++interim_ > kMostInterim)
            return Fail(HttpFailure::NoReply);
        Begin();
    }
    return true;
}

/// Keeps what is wanted of a reply. False: nothing more is to be read.
bool IncomingReply::Finish() {
    auto& message = parser_->get();
    reply.status = static_cast<int>(message.result_int());
    const auto found = message.find(http::field::location);
    if (IsRedirect(reply.status) && found != message.end())
        location = std::string(found->value());
    reply.body = std::move(message.body());
    return false;
}

/// One request on a connection of its own.
class Exchange {
public:
    /// All of it ends by `end`.
    Exchange(const HttpLimits& limits, Clock::time_point end, const std::stop_token& stop)
        : limits_(limits), end_(end), stop_(stop), socket_(context_), incoming_(limits.body) {}

    HttpReply Run(const HttpAddress& address, const HttpRequest& request) {
        const Clock::time_point until = std::min<Clock::time_point>(Clock::now() + limits_.connect, end_);
        const Endpoints endpoints = LookUp(address, until, stop_);
        if (endpoints.empty() || !Connect(endpoints, until))
            return Failed(HttpFailure::NoConnection);
        if (!Write(HeadOf(request, address) + request.body))
            return Failed(HttpFailure::NoReply);
        while (Read()) {
        }
        return stop_.stop_requested() ? Failed(HttpFailure::Stopped) : std::move(incoming_.reply);
    }
    const std::string& Location() const { return incoming_.location; }

private:
    HttpReply Failed(HttpFailure failure) const {
        return {stop_.stop_requested() ? HttpFailure::Stopped : failure, 0, {}};
    }
    /// Runs what has been started until it is done, the time is over or a stop is asked for; then it is given up.
    bool Wait(const bool& done, Clock::time_point until) {
        context_.restart();
        while (!done && !stop_.stop_requested() && Clock::now() < until)
            context_.run_one_for(std::min<Clock::duration>(kLook, until - Clock::now()));
        if (done)
            return true;
        error_code ignored;
        socket_.close(ignored);
        context_.restart();
        context_.run();
        return false;
    }
    Clock::time_point Silence() const { return std::min<Clock::time_point>(Clock::now() + limits_.silence, end_); }
    bool Connect(const Endpoints& endpoints, Clock::time_point until);
    bool Write(const std::string& bytes);
    bool Read();

    const HttpLimits& limits_;
    Clock::time_point end_;
    const std::stop_token& stop_;
    asio::io_context context_;
    tcp::socket socket_;
    IncomingReply incoming_;
};

bool Exchange::Connect(const Endpoints& endpoints, Clock::time_point until) {
    error_code result;
    bool done = false;
    asio::async_connect(socket_, endpoints, [&](const error_code& error, const tcp::endpoint&) {
        result = error;
        done = true;
    });
    return Wait(done, until) && !result;
}

bool Exchange::Write(const std::string& bytes) {
    for (size_t at = 0; at < bytes.size();) {
        error_code result;
        size_t written = 0;
        bool done = false;
        socket_.async_write_some(asio::buffer(bytes.data() + at, bytes.size() - at),
                                 [&](const error_code& error, size_t count) {
                                     result = error;
                                     written = count;
                                     done = true;
                                 });
        if (!Wait(done, Silence()) || result)
            return false;
        at += written;
    }
    return true;
}

/// Reads a block; false once the reply is whole, or won't be.
bool Exchange::Read() {
    std::array<char, kBlock> block;
    error_code result;
    size_t got = 0;
    bool done = false;
    socket_.async_read_some(asio::buffer(block), [&](const error_code& error, size_t count) {
        result = error;
        got = count;
        done = true;
    });
    const bool inTime = Wait(done, Silence());
    if (inTime && !result)
        return incoming_.Take(block.data(), got);
    if (inTime && result == asio::error::eof)
        incoming_.End();
    else
        incoming_.reply.failure = HttpFailure::NoReply;
    return false;
}

}  // namespace

HttpReply HttpClient::Send(const HttpRequest& request, const std::stop_token& stop) try {
    std::optional<HttpAddress> address = ParseHttpAddress(request.url);
    if (!address || !CanBeSent(request))
        return {HttpFailure::BadAddress, 0, {}};
    const Clock::time_point end =
        request.longest.count() > 0 ? Clock::now() + request.longest : Clock::time_point::max();
    for (int followed = 0;; ++followed) {
        Exchange exchange(limits_, end, stop);
        HttpReply reply = exchange.Run(*address, request);
        if (exchange.Location().empty())
            return reply;
        address = FollowLocation(*address, exchange.Location());
        if (!address || followed == limits_.redirects)
            return {HttpFailure::BadRedirect, 0, {}};
    }
} catch (const std::exception&) {
    // No thread, no memory or no socket.
    return {HttpFailure::NoConnection, 0, {}};
}

}  // namespace lore
