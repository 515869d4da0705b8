#pragma once

#include <filesystem>

namespace lore {

/// The data root of the user: "Tanner Quay Rigging/Lorebinder" below $XDG_DATA_HOME, by default ~/.local/share.
std::filesystem::path UserDataRoot();
/// The settings file of the user: "TannerQuayRig/Lorebinder.ini" below $XDG_CONFIG_HOME, by default ~/.config.
std::filesystem::path UserSettingsFile();
/// The folder of the running program, where its companions lie.
std::filesystem::path ProgramFolder();

}  // namespace lore
