#include "app/online_commands.h"

namespace lore {

namespace {

SyncPlace PlaceOf(const CLorebinderApp& app) {
    return {app.Data().DataFiles(), app.Ports().programFolder,
            NextCategoryId(app.NoteBook().categories, app.GetSettings())};
}

}  // namespace

OnlineSession::OnlineSession(CLorebinderApp& app)
    : app_(app), config_(LoadOnlineConfig(app.Store())), context_(app.Context()) {
    if (config_.HasService() && app.Ports().http)
        service_.emplace(*app.Ports().http, config_.service);
}

OnlineWorld OnlineSession::World() {
    const AppPorts& ports = app_.Ports();
    return {.book = app_.NoteBook(),
            .data = app_.Data(),
            .settings = app_.GetSettings(),
            .service = service_ ? &*service_ : nullptr,
            .context = context_,
            .prompts = ports.prompts,
            .progress = ports.progress,
            .faults = ports.faults,
            .background = ports.background,
            .toUtc = ports.toUtc,
            .storeSettings = [&app = app_] { app.StoreSettings(); }};
}

bool CheckLinkAtStart(CLorebinderApp& app) {
    return CheckLinkAtStart(OnlineSession(app).World());
}

bool LaunchSync(CLorebinderApp& app, std::string_view command) {
    const AppPorts& ports = app.Ports();
    app.StoreSettings();
    const std::optional<std::string> failed =
        ports.companions ? LaunchSyncer(*ports.companions, command, app.GetSettings(), PlaceOf(app)) : kNotInstalled;
    if (failed)
        TellSyncNotStarted(ports.faults, *failed);
    return !failed;
}

void TellSyncNotStarted(FaultNotice& faults, const std::string& reason) {
    faults.Tell({"The sync program could not be started", kSyncProgram, reason});
}

bool RunSync(CLorebinderApp& app) {
    const AppPorts& ports = app.Ports();
    if (!app.GetSettings().IsSyncEngaged()) {
        TellSyncNotEngaged(ports.prompts);
        return false;
    }
    const char* const command = AskToRunSync(ports.prompts);
    return command && LaunchSync(app, command);
}

void SyncAtClose(CLorebinderApp& app) {
    if (SyncsAtClose(app.GetSettings()) && app.Ports().companions)
        LaunchSyncer(*app.Ports().companions, kSync, app.GetSettings(), PlaceOf(app));
}

}  // namespace lore
