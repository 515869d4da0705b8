#pragma once

#include <optional>
#include <string_view>

#include "app/lorebinder_app.h"
#include "online/notebook_link.h"
#include "online/online_config.h"
#include "online/sync_launch.h"
#include "online/sync_setup.h"

namespace lore {

/// What the commands of the online account work with, for the time that one runs.
class OnlineSession {
public:
    explicit OnlineSession(CLorebinderApp& app);
    OnlineSession(const OnlineSession&) = delete;
    OnlineSession& operator=(const OnlineSession&) = delete;

    /// It holds references to this object.
    OnlineWorld World();
    const OnlineConfig& Config() const { return config_; }

private:
    CLorebinderApp& app_;
    OnlineConfig config_;
    ReadContext context_;
    std::optional<DesktopCommService> service_;
};

/// The check of the link to the online account, 200 ms after the start has opened a NoteBook. True if progress is
/// shown, which is to be hidden a little later.
bool CheckLinkAtStart(CLorebinderApp& app);

/// Starts the sync program with the open NoteBooks' next ids. False if it could not be started, which is told: then
/// this program stays.
bool LaunchSync(CLorebinderApp& app, std::string_view command);

/// Tells that the sync program could not be started, and why.
void TellSyncNotStarted(FaultNotice& faults, const std::string& reason);

/// "Run Sync": true if the sync program was started and the main window is to close.
bool RunSync(CLorebinderApp& app);

/// The sync at the close of the main window, if the settings want it. A failure to start is passed over.
void SyncAtClose(CLorebinderApp& app);

}  // namespace lore
