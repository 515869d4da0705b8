#pragma once

#include <string>
#include <utility>

#include "online/online_world.h"

namespace lore {

// What each flow does about a call of the service.

/// What to set up where there is no service to call.
inline constexpr char kNoService[] =
    "No online service is set up.\n\nTo use an online account, set \"Endpoint\" and \"Namespace\" in the section "
    "\"Online\" of the settings file while Lorebinder is closed, then start it again.";

/// True if there is a service to call. Otherwise the user is told what to set up.
bool HasService(const OnlineWorld& world);

/// The one message for a call that failed, for whatever reason. Nothing for one that the user has stopped.
void TellFailedCall(const OnlineWorld& world, SoapError error);

/// There is no account with the GUID.
void TellUnknownAccount(const OnlineWorld& world);

/// Shows a text and runs a call beside the painting of the window; the progress stays for what follows. `call` gets
/// the service and the request to stop. There is a service.
template <typename Call>
auto CallService(const OnlineWorld& world, const std::string& text, Call call) {
    world.progress.Show();
    world.progress.SetMessage(text);
    decltype(call(*world.service, std::stop_token())) called;
    const bool done =
        RunBeside(world.background, text, [&](const std::stop_token& stop) { called = call(*world.service, stop); });
    if (!done)
        called = {SoapError::Stopped, {}};
    return called;
}

/// The same, and the progress is hidden after it. A failure is told.
template <typename Call>
auto CallServiceOnce(const OnlineWorld& world, const std::string& text, Call call) {
    auto called = CallService(world, text, std::move(call));
    world.progress.Hide();
    if (!called.Ok())
        TellFailedCall(world, called.error);
    return called;
}

}  // namespace lore
