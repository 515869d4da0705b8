#pragma once

#include <filesystem>

#include "ports/process_launcher.h"

namespace lore {

/// How a companion learns where the data folder and the settings of the process that started it are.
inline constexpr char kDataVariable[] = "LOREBINDER_DATA";
inline constexpr char kSettingsVariable[] = "LOREBINDER_SETTINGS";

/// Starts programs of the program folder as processes of their own, which outlive this one.
class CompanionLauncher : public ProcessLauncher {
public:
    CompanionLauncher(const std::filesystem::path& dataRoot, const std::filesystem::path& settingsFile);

    std::optional<std::string> StartCompanion(const std::string& name,
                                              const std::vector<std::string>& arguments) override;

private:
    std::filesystem::path dataRoot_, settingsFile_;
};

/// The data root and the settings of a companion: what the process that started it named, otherwise the user's own. A
/// data root alone comes with the settings that stand in it.
struct CompanionPlaces {
    std::filesystem::path dataRoot;
    std::filesystem::path settingsFile;
};
CompanionPlaces PlacesOfCompanion();
/// The options of a command line that name these places; none where both are the user's own.
std::vector<std::string> PlaceArguments(const CompanionPlaces& places);
/// The file that makes the desktop start the agent with the session: one for each data root, of which a user may have
/// several.
std::filesystem::path AgentAutostart(const CompanionPlaces& places);

}  // namespace lore
