#pragma once

#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace lore {

/// What the server of a test sends back to one request.
struct HttpAnswer {
    std::string bytes;
    size_t piece = 0;     ///< bytes sent at a time; 0 for all at once
    int pause = 0;        ///< milliseconds before each piece
    bool closes = true;   ///< otherwise the connection is held until the client lets go
    bool resets = false;  ///< the end of the connection is a reset
    std::string again{};  ///< sent after the bytes, again and again
    uint64_t times = 0;
};

/// A web server on a port of this machine, in a thread of its own. It keeps the raw bytes of what it is asked, answers
/// with what a test has laid out, in order, and closes at once when nothing is left.
class HttpServer {
public:
    HttpServer() {
        listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
        ::listen(listener_, 16);
        socklen_t size = sizeof address;
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { Run(); });
    }
    ~HttpServer() {
        ends_ = true;
        thread_.join();
        ::close(listener_);
    }
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::string Host() const { return "127.0.0.1:" + std::to_string(port_); }
    std::string Url(const std::string& path = "/") const { return "http://" + Host() + path; }

    void Add(HttpAnswer answer) {
        const std::scoped_lock lock(mutex_);
        answers_.push_back(std::move(answer));
    }
    /// A whole reply with its length.
    void Add(int status, const std::string& body, const std::string& fields = {}) {
        Add({"HTTP/1.1 " + std::to_string(status) + " Status\r\nContent-Length: " + std::to_string(body.size()) +
             "\r\n" + fields + "\r\n" + body});
    }
    /// The reply of the account service to one of its operations.
    void AddResult(const std::string& operation, const std::string& fields, int pause = 0) {
        const std::string body = "<e:Envelope xmlns:e=\"http://schemas.xmlsoap.org/soap/envelope/\"><e:Body><" +
                                 operation + "Response><" + operation + "Result>" + fields + "</" + operation +
                                 "Result></" + operation + "Response></e:Body></e:Envelope>";
        Add({"HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body, 0, pause});
    }
    /// The raw bytes of the requests so far.
    std::vector<std::string> Requests() const {
        const std::scoped_lock lock(mutex_);
        return requests_;
    }
    /// Answers that nobody has asked for yet.
    size_t Left() const {
        const std::scoped_lock lock(mutex_);
        return answers_.size();
    }

private:
    bool Readable(int socket) const {
        pollfd wait = {socket, POLLIN, 0};
        while (!ends_) {
            if (::poll(&wait, 1, 10) > 0)
                return true;
        }
        return false;
    }
    void Run() {
        while (Readable(listener_)) {
            const int socket = ::accept(listener_, nullptr, nullptr);
            const int now = 1;
            ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
            Serve(socket);
            ::close(socket);
        }
    }
    static size_t LengthIn(const std::string& head) {
        const size_t at = head.find("Content-Length: ");
        return at == std::string::npos ? 0 : std::stoul(head.substr(at + 16));
    }
    std::string ReadRequest(int socket) const {
        std::string bytes;
        size_t end = std::string::npos;
        while (end == std::string::npos || bytes.size() < end + 4 + LengthIn(bytes.substr(0, end))) {
            char block[4096];
            const ssize_t got = Readable(socket) ? ::read(socket, block, sizeof block) : 0;
            if (got <= 0)
                break;
            bytes.append(block, static_cast<size_t>(got));
            end = bytes.find("\r\n\r\n");
        }
        return bytes;
    }
    HttpAnswer Next(const std::string& request) {
        const std::scoped_lock lock(mutex_);
        requests_.push_back(request);
        if (answers_.empty())
            return {};
        HttpAnswer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    static bool Send(int socket, const std::string& part) {
        for (size_t sent = 0; sent < part.size();) {
            const ssize_t count = ::send(socket, part.data() + sent, part.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                return false;
            sent += static_cast<size_t>(count);
        }
        return true;
    }
    void Serve(int socket) {
        const std::string request = ReadRequest(socket);
        if (request.empty())
            return;
        const HttpAnswer answer = Next(request);
        const size_t piece = answer.piece ? answer.piece : answer.bytes.size();
        for (size_t at = 0; at < answer.bytes.size() && !ends_; at += piece) {
            std::this_thread::sleep_for(std::chrono::milliseconds(answer.pause));
            if (!Send(socket, answer.bytes.substr(at, piece)))
                return;
        }
        for (uint64_t i = 0; i < answer.times && !ends_; ++i) {
            if (!Send(socket, answer.again))
                return;
        }
        if (answer.resets) {
            const linger hard = {1, 0};
            ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
        } else if (!answer.closes) {
            char byte = 0;
            while (Readable(socket) && ::read(socket, &byte, 1) > 0) {
            }
        }
    }

    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> ends_ = false;
    mutable std::mutex mutex_;
    std::deque<HttpAnswer> answers_;
    std::vector<std::string> requests_;
    std::thread thread_;
};

}  // namespace lore
