#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classify/category_list.h"
#include "ports/process_launcher.h"
#include "ports/prompts.h"
#include "settings/settings.h"

namespace lore {

/// The companion that brings the NoteBooks and the online account together while this program is closed.
inline constexpr char kSyncProgram[] = "syncer";

// What it is told to do. On the command line as they stand; never change.
inline constexpr char kSyncOpen[] = "SYNCOPEN";      ///< sync, then start this program again
inline constexpr char kSync[] = "SYNC";              ///< sync
inline constexpr char kSyncCreate[] = "SYNCCREATE";  ///< link all NoteBooks by name, make what is missing, and sync

/// What the sync program works with.
struct SyncPlace {
    std::filesystem::path dataFiles;      ///< the folder "Data Files"; it may be relative
    std::filesystem::path programFolder;  ///< where this program lies
    int32_t nextCategoryId = 1;
};

/// After the program's own path: command, SyncGUID, LocalGUID, absolute folder of the data, program folder with a
/// separator at its end, the next free ids of notes and categories, the version of the data.
std::vector<std::string> SyncArguments(std::string_view command, const Settings& settings, const SyncPlace& place);

/// Starts the sync program and goes on. Gives the reason if it could not be started, which isn't told here.
std::optional<std::string> LaunchSyncer(ProcessLauncher& launcher, std::string_view command, const Settings& settings,
                                        const SyncPlace& place);

/// The next free category id: after the highest one in use or given out. No forest needs to be loaded.
int32_t NextCategoryId(const CProCategoryList& categories, const Settings& settings);

/// "Run Sync": asks whether to restart after the sync. The command to launch, or null to do nothing.
const char* AskToRunSync(Prompts& prompts);

/// Whether a start runs a sync in place of the program, and whether a close runs one. `request` is the command line;
/// the sync program restarts this one with a word in it that forbids another sync.
bool SyncsAtStart(const Settings& settings, std::string_view request);
bool SyncsAtClose(const Settings& settings);

/// True if a command line holds that word, in any case: then it names no file.
bool BypassesSync(std::string_view request);

}  // namespace lore
