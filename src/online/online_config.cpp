#include "online/online_config.h"

#include "base/text.h"
#include "online/desktop_comm_service.h"

namespace lore {

namespace {

constexpr char kSection[] = "Online";

std::string Value(const SettingsStore& store, const char* key) {
    const std::string text = store.Get(kSection, key).value_or("");
    return std::string(Trim(text));
}

/// "http://host" and "http://host/" leave the path to the service.
std::string WithPath(std::string endpoint) {
    const size_t host = endpoint.find("//");
    if (endpoint.empty() || host == std::string::npos)
        return endpoint;
    const size_t path = endpoint.find('/', host + 2);
    if (path == std::string::npos || path + 1 == endpoint.size())
        return endpoint.substr(0, path) + kServicePath;
    return endpoint;
}

std::string WithSlash(const std::string& nameSpace) {
    return nameSpace.empty() || nameSpace.ends_with('/') ? nameSpace : nameSpace + "/";
}

}  // namespace

OnlineConfig LoadOnlineConfig(const SettingsStore& store) {
    OnlineConfig config;
    config.service = {WithPath(Value(store, "Endpoint")), WithSlash(Value(store, "Namespace"))};
    config.infoPage = Value(store, "InfoPage");
    config.tutorialPage = Value(store, "TutorialPage");
    return config;
}

}  // namespace lore
