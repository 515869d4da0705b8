#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lore {

inline constexpr char kEnvelopeNamespace[] = "http://schemas.xmlsoap.org/soap/envelope/";
inline constexpr char kInstanceNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";

/// An argument of an operation. A string is bytes of the core; one without a value is sent as nil.
struct SoapArgument {
    std::string_view name;
    std::variant<int32_t, bool, std::optional<std::string>> value;
};

/// The request of an operation in the document-literal wrapped form, UTF-8 without an XML declaration. Nothing if a
/// string holds a character that XML can't.
std::optional<std::string> SoapEnvelope(std::string_view operation, std::string_view serviceNamespace,
                                        const std::vector<SoapArgument>& arguments);

}  // namespace lore
