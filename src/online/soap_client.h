#pragma once

#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "online/soap_envelope.h"
#include "online/soap_reply.h"
#include "ports/http_transport.h"

namespace lore {

/// Why a call failed.
enum class SoapError {
    None = 0,
    Reader = 1,        ///< the XML reader could not be set up
    Request = 2,       ///< the request could not be generated: there is no usable address
    RequestBody = 3,   ///< the request could not be generated: a text can't be sent
    NoConnection = 4,  ///< the server could not be reached
    Status = 6,        ///< the server answered with a status other than 200, 202 or 500
    Fault = 7,         ///< the server says that the operation failed
    Reply = 9,         ///< the reply could not be read
    Stopped = 10,      ///< the user asked to stop
};

/// Where a service is and what it is called by.
struct ServiceAddress {
    std::string endpoint;   ///< http://host[:port]/path
    std::string nameSpace;  ///< ends in a slash
};

/// One conversation with a service over SOAP 1.1.
class SoapClient {
public:
    SoapClient(HttpTransport& transport, ServiceAddress address)
        : transport_(transport), address_(std::move(address)) {}

    /// Calls an operation. With SoapError::None the result may be missing all the same: the server has nothing to say.
    SoapError Invoke(std::string_view operation, const std::vector<SoapArgument>& arguments, const SoapShape& shape,
                     const std::stop_token& stop, std::optional<SoapResult>& result);

private:
    static SoapError ReadReply(const HttpReply& reply, std::string_view operation, const SoapShape& shape,
                               std::optional<SoapResult>& result);

    HttpTransport& transport_;
    ServiceAddress address_;
};

}  // namespace lore
