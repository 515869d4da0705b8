#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lore {

inline constexpr char kHttpPort[] = "80";

/// The parts of an address of http.
struct HttpAddress {
    std::string host;  ///< without the brackets of an IPv6 address
    std::string port = kHttpPort;
    std::string target = "/";  ///< path and query

    /// What stands in the field "Host": without the port if it is 80.
    std::string HostField() const;
};

/// Takes an address apart. Nothing if it isn't one of http, has no host or no such port, or holds a user's name, blanks
/// or control characters. What stands behind "#" is left out.
std::optional<HttpAddress> ParseHttpAddress(std::string_view url);

/// The address that a redirect leads to: one with a scheme as it is, any other as seen from `from`.
std::optional<HttpAddress> FollowLocation(const HttpAddress& from, std::string_view location);

}  // namespace lore
