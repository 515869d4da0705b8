#include "online/sync_launch.h"

#include <algorithm>
#include <system_error>

#include "base/record_file.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr char kBypassSync[] = "BYPASSSYNC";

/// Of a path that the user gave: the sync program need not run where this one does.
std::string Absolute(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path.string() : absolute.string();
}

std::string WithSeparator(const std::filesystem::path& folder) {
    return (folder / "").string();
}

}  // namespace

std::vector<std::string> SyncArguments(std::string_view command, const Settings& settings, const SyncPlace& place) {
    return {std::string(command),
            settings.Text(Option::SyncGUID),
            settings.Text(Option::LocalGUID),
            Absolute(place.dataFiles),
            WithSeparator(place.programFolder),
            std::to_string(int64_t{settings.Int(Option::MaxNoteID)} + 1),
            std::to_string(place.nextCategoryId),
            kDataVersionText};
}

std::optional<std::string> LaunchSyncer(ProcessLauncher& launcher, std::string_view command, const Settings& settings,
                                        const SyncPlace& place) {
    return launcher.StartCompanion(kSyncProgram, SyncArguments(command, settings, place));
}

int32_t NextCategoryId(const CProCategoryList& categories, const Settings& settings) {
    int highest = settings.Int(Option::MaxCategoryID);
    return categories.NewId(highest);
}

const char* AskToRunSync(Prompts& prompts) {
    switch (
        prompts.Ask("Lorebinder must be closed inorder to run the sync.\n\nDo you wish to have Lorebinder restart "
                    "after the sync?",
                    "Restart After Sync?", true)) {
        case PromptAnswer::Yes:
            return kSyncOpen;
        case PromptAnswer::No:
            return kSync;
        default:
            return nullptr;
    }
}

bool SyncsAtStart(const Settings& settings, std::string_view request) {
    return settings.IsSyncEngaged() && settings.IsOne(Option::SyncAtStart) && !BypassesSync(request);
}

bool SyncsAtClose(const Settings& settings) {
    return settings.IsSyncEngaged() && settings.IsOne(Option::SyncAtClose);
}

bool BypassesSync(std::string_view request) {
    return ToUpper(request).find(kBypassSync) != std::string::npos;
}

}  // namespace lore
