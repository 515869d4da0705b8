#pragma once

#include <functional>

#include "notes/open_notebook.h"
#include "online/desktop_comm_service.h"
#include "ports/background.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/read_context.h"
#include "settings/settings.h"

namespace lore {

/// What the flows of the online account work on and ask of the world. All of it outlives the flows.
struct OnlineWorld {
    OpenNoteBook& book;
    const DataPaths& data;
    Settings& settings;
    DesktopCommService* service;  ///< null while no service is set up
    const ReadContext& context;
    Prompts& prompts;
    Progress& progress;
    FaultNotice& faults;
    Background* background = nullptr;
    /// A local time as Coordinated Universal Time, by the rules of that day.
    std::function<DateTime(const DateTime&)> toUtc = [](const DateTime& local) { return local; };
    /// Stores all settings at once.
    std::function<void()> storeSettings = [] {};
};

}  // namespace lore
