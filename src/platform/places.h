#pragma once

#include <filesystem>

namespace lore {

/// The data root of the user: "Tanner Quay Rigging/Lorebinder" below $XDG_DATA_HOME, by default ~/.local/share.
std::filesystem::path UserDataRoot();
/// The settings file of the user: "TannerQuayRig/Lorebinder.ini" below $XDG_CONFIG_HOME, by default ~/.config.
std::filesystem::path UserSettingsFile();
/// The settings file of a data root that is named without one: it stands in the root, beside the data.
std::filesystem::path SettingsFileIn(const std::filesystem::path& dataRoot);
/// Where the desktop looks for what starts with the user's session.
std::filesystem::path AutostartFolder();
/// True if the system has an entry of this file name for the start of any session, below $XDG_CONFIG_DIRS, by default
/// /etc/xdg. A user's own entry of the same name takes its place.
bool HasSystemAutostart(const std::filesystem::path& name);
/// The manual beside the running program, or where a package puts it; empty if it is at neither place.
std::filesystem::path ManualFile();
/// The folder of the running program, where its companions lie.
std::filesystem::path ProgramFolder();

}  // namespace lore
