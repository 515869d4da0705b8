#pragma once

#include <string>

#include "online/soap_client.h"
#include "ports/settings_store.h"

namespace lore {

/// What this installation knows of the online service: the section "Online" of the settings store. Every value is empty
/// unless somebody has set it.
struct OnlineConfig {
    ServiceAddress service;    ///< keys "Endpoint" and "Namespace"
    std::string infoPage;      ///< key "InfoPage": a web address
    std::string tutorialPage;  ///< key "TutorialPage": a web address

    /// False while there is no service to call.
    bool HasService() const { return !service.endpoint.empty() && !service.nameSpace.empty(); }
};

/// An endpoint without a path gets that of the service, a namespace its slash at the end.
OnlineConfig LoadOnlineConfig(const SettingsStore& store);

}  // namespace lore
