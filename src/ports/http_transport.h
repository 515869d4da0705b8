#pragma once

#include <chrono>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace lore {

/// A request to a web server. Its head goes out in this order: method and path, "Host", "Content-Length", `fields`.
struct HttpRequest {
    std::string method = "POST";
    std::string url;  ///< http://host[:port]/path
    std::vector<std::pair<std::string, std::string>> fields;
    std::string body;
    std::chrono::milliseconds longest{0};  ///< for all of it, redirects included; 0 for as long as bytes come
};

/// Why there is no reply.
enum class HttpFailure {
    None,
    BadAddress,    ///< the url is none of http, or would break the request
    NoConnection,  ///< no such host, refused, or no connection in time
    NoReply,       ///< the reply didn't come, was cut off, or isn't one
    TooLarge,
    BadRedirect,  ///< to an address that isn't http, or one too many
    Stopped,      ///< the user asked to stop
};

/// What came back. With a failure nothing else counts.
struct HttpReply {
    HttpFailure failure = HttpFailure::None;
    int status = 0;    ///< 200 and so on; 0 with a failure
    std::string body;  ///< without the form in which it was sent
};

/// Sends requests, each on a connection of its own.
class HttpTransport {
public:
    virtual ~HttpTransport() = default;
    /// Waits for the reply, until `stop` is requested. Redirects are followed. Safe to call from several threads.
    virtual HttpReply Send(const HttpRequest& request, const std::stop_token& stop) = 0;
};

}  // namespace lore
