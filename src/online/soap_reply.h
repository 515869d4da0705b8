#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lore {

/// Elements of a reply may stand this deep in each other.
inline constexpr size_t kDeepestReply = 1000;

/// The fields of a record by name, bytes of the core. One that is nil, or missing, isn't there.
using SoapFields = std::map<std::string, std::string, std::less<>>;

/// What the result of an operation may hold; everything else in it is skipped.
struct SoapShape {
    std::vector<std::string_view> fields = {};
    std::string_view list = {}, item = {};  ///< an element with records of the name `item`
    std::vector<std::string_view> itemFields = {};
};

/// The result of an operation, as far as its SoapShape asks for it.
struct SoapResult {
    std::string text;  ///< of a result without fields
    SoapFields fields;
    std::vector<SoapFields> items;
};

/// How the server says that an operation failed.
struct SoapFault {
    std::string code, string, detail;
};

/// What was read of a reply.
struct SoapReply {
    bool isRead = false;               ///< false if it isn't a reply to this operation, or no XML to its end
    std::optional<SoapResult> result;  ///< nothing if it is nil or missing
    std::optional<SoapFault> fault;
};

/// Reads the reply to an operation: in the body of an envelope, whose header is skipped, the element operation +
/// "Response" with operation + "Result", or a fault. A reply that is deeper than kDeepestReply or declares a document
/// type isn't read; memory stays in proportion to its length.
SoapReply ReadSoapReply(std::string_view xml, std::string_view operation, const SoapShape& shape);

}  // namespace lore
