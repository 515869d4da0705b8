#pragma once

#include <chrono>
#include <cstddef>

#include "ports/http_transport.h"

namespace lore {

/// What a server may ask of this side.
struct HttpLimits {
    std::chrono::milliseconds connect{10000};  ///< for the host's address and the connection together
    std::chrono::milliseconds silence{10000};  ///< without a byte in either direction
    size_t body = size_t{16} << 20;            ///< bytes of a reply
    int redirects = 5;
};

/// Requests over sockets: HTTP/1.1, a connection for each, no proxy. A reply comes by its length, in chunks with or
/// without trailers, or up to the close. A redirect keeps method and body.
class HttpClient : public HttpTransport {
public:
    explicit HttpClient(const HttpLimits& limits = {}) : limits_(limits) {}
    HttpReply Send(const HttpRequest& request, const std::stop_token& stop) override;

private:
    HttpLimits limits_;
};

}  // namespace lore
