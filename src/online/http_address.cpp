#include "online/http_address.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

constexpr std::string_view kScheme = "http:";
constexpr size_t kLongestAddress = 8192;
constexpr int kHighestPort = 65535;

bool StartsWithScheme(std::string_view url) {
    const size_t colon = url.find(':');
    return colon != std::string_view::npos && url.find_first_of("/?#") > colon;
}

bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < 0x7F; });
}

bool IsPort(std::string_view text) {
    return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string_view::npos &&
           ParseInt(text) > 0 && ParseInt(text) <= kHighestPort;
}

/// "host", "host:port" or "[address]:port".
bool ReadAuthority(std::string_view text, HttpAddress& address) {
    const bool bracketed = text.starts_with('[');
    const size_t end = bracketed ? text.find(']') : text.find(':');
    if (text.find('@') != std::string_view::npos || (bracketed && end == std::string_view::npos))
        return false;
    address.host = bracketed ? text.substr(1, end - 1) : text.substr(0, end);
    std::string_view rest = end == std::string_view::npos ? "" : text.substr(bracketed ? end + 1 : end);
    if (rest.starts_with(':')) {
        rest.remove_prefix(1);
        if (!rest.empty() && !IsPort(rest))
            return false;
        address.port = rest.empty() ? kHttpPort : std::to_string(ParseInt(rest));
    } else if (!rest.empty()) {
        return false;
    }
    return !address.host.empty();
}

/// The folder of a path, with its slash at the end.
std::string FolderOf(std::string_view target) {
    target = target.substr(0, target.find('?'));
    return std::string(target.substr(0, target.rfind('/') + 1));
}

}  // namespace

std::string HttpAddress::HostField() const {
    const std::string name = host.find(':') == std::string::npos ? host : "[" + host + "]";
    return port == kHttpPort ? name : name + ":" + port;
}

std::optional<HttpAddress> ParseHttpAddress(std::string_view url) {
    url = url.substr(0, url.find('#'));
    const bool isHttp = EqualNoCase(url.substr(0, kScheme.size()), kScheme) &&
                        url.substr(std::min(kScheme.size(), url.size())).starts_with("//");
    if (!isHttp || url.size() > kLongestAddress || !IsPlain(url))
        return std::nullopt;
    url.remove_prefix(kScheme.size() + 2);
    const size_t path = std::min(url.find_first_of("/?"), url.size());
    HttpAddress address;
    if (!ReadAuthority(url.substr(0, path), address))
        return std::nullopt;
    const std::string_view target = url.substr(path);
    address.target = (target.starts_with('/') ? "" : "/") + std::string(target);
    return address;
}

std::optional<HttpAddress> FollowLocation(const HttpAddress& from, std::string_view location) {
    location = Trim(location);
    if (location.empty())
        return std::nullopt;
    if (StartsWithScheme(location))
        return ParseHttpAddress(location);
    const std::string start = "http:";
    if (location.starts_with("//"))
        return ParseHttpAddress(start + std::string(location));
    const std::string host = start + "//" + from.HostField();
    if (location.starts_with('/'))
        return ParseHttpAddress(host + std::string(location));
    if (location.starts_with('?'))
        return ParseHttpAddress(host + from.target.substr(0, from.target.find('?')) + std::string(location));
    return ParseHttpAddress(host + FolderOf(from.target) + std::string(location));
}

}  // namespace lore
