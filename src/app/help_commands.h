#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "ports/prompts.h"
#include "settings/settings.h"

namespace lore {

/// What the menu "Help" works with. Both openers give false if the system has no program for it.
struct HelpWorld {
    const Settings& settings;
    Prompts& prompts;
    std::function<bool(const std::filesystem::path&)> openFile;
    std::function<bool(const std::string& address)> openPage;
};

/// Opens the manual; one that isn't there (an empty path) or can't be opened is told.
void OpenManual(const HelpWorld& world, const std::filesystem::path& manual);
/// Opens the configured page of the tutorial; without one, or with one that is no web page, says so.
void OpenTutorial(const HelpWorld& world);
/// Opens a web page; what is none, or can't be opened, is told.
void OpenHelpPage(const HelpWorld& world, const std::string& address, const char* title);

/// The line of the box "About Lorebinder...".
std::string AboutVersionText();

}  // namespace lore
