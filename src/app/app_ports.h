#pragma once

#include <filesystem>
#include <functional>

#include "base/date_time.h"
#include "ports/agent.h"
#include "ports/background.h"
#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/guid_source.h"
#include "ports/http_transport.h"
#include "ports/process_launcher.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/settings_store.h"

namespace lore {

/// What the application asks of the world. All of it outlives the application.
struct AppPorts {
    Prompts& prompts;
    Progress& progress;
    Clock& clock;
    GuidSource& guids;
    SettingsStore& store;
    FaultNotice& faults;
    Background* background = nullptr;  ///< without one everything runs on the caller's thread
    /// Lets milliseconds pass.
    std::function<void(int)> wait = [](int) {};
    /// Gives a random number from 0 to the one given.
    std::function<int(int)> random = [](int) { return 0; };
    ProcessLauncher* companions = nullptr;     ///< without one no companion is started
    Agent* agent = nullptr;                    ///< without one none is started or told
    HttpTransport* http = nullptr;             ///< without one no server is reached
    std::filesystem::path programFolder = {};  ///< where this program and its companions lie
    std::function<DateTime(const DateTime&)> toUtc = [](const DateTime& d) { return d; };  ///< from local time
};

}  // namespace lore
