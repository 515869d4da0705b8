#include "online/soap_client.h"

#include <chrono>
#include <utility>

namespace lore {

namespace {

/// For one call. Replies have some kilobytes; a server that sends a byte now and then must not hold one for ever.
constexpr std::chrono::seconds kLongestCall{60};

constexpr int kOk = 200, kAccepted = 202, kServerError = 500;

HttpRequest RequestOf(const ServiceAddress& address, std::string_view operation, std::string body) {
    HttpRequest request;
    request.url = address.endpoint;
    request.fields = {{"Content-Type", "text/xml; charset=utf-8"},
                      {"Accept", "text/xml"},
                      {"SOAPAction", "\"" + address.nameSpace + std::string(operation) + "\""},
                      {"User-Agent", "Microsoft-ATL-Native/8.00"}};
    request.body = std::move(body);
    request.longest = kLongestCall;
    return request;
}

SoapError ErrorOf(HttpFailure failure) {
    switch (failure) {
        case HttpFailure::None:
            return SoapError::None;
        case HttpFailure::BadAddress:
            return SoapError::Request;
        case HttpFailure::NoConnection:
            return SoapError::NoConnection;
        case HttpFailure::Stopped:
            return SoapError::Stopped;
        default:
            return SoapError::Reply;
    }
}

}  // namespace

SoapError SoapClient::ReadReply(const HttpReply& reply, std::string_view operation, const SoapShape& shape,
                                std::optional<SoapResult>& result) {
    if (reply.status == kAccepted)
        return SoapError::None;
    if (reply.status != kOk && reply.status != kServerError)
        return SoapError::Status;
    SoapReply read = ReadSoapReply(reply.body, operation, shape);
    if (!read.isRead)
        return SoapError::Reply;
    if (read.fault || reply.status == kServerError)
        return SoapError::Fault;
    result = std::move(read.result);
    return SoapError::None;
}

SoapError SoapClient::Invoke(std::string_view operation, const std::vector<SoapArgument>& arguments,
                             const SoapShape& shape, const std::stop_token& stop, std::optional<SoapResult>& result) {
    result.reset();
    if (address_.endpoint.empty())
        return SoapError::Request;
    auto body = SoapEnvelope(operation, address_.nameSpace, arguments);
    if (!body)
        return SoapError::RequestBody;
    const HttpReply reply = transport_.Send(RequestOf(address_, operation, std::move(*body)), stop);
    const SoapError error = ErrorOf(reply.failure);
    return error == SoapError::None ? ReadReply(reply, operation, shape, result) : error;
}

}  // namespace lore
