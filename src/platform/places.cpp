#include "platform/places.h"

#include <cstdlib>
#include <pwd.h>
#include <sstream>
#include <string>
#include <system_error>
#include <unistd.h>

#include "notes/data_files.h"

namespace lore {

namespace {

/// What the variable names, if that is an absolute path; otherwise what the system knows of the user.
std::filesystem::path HomeFolder() {
    const char* const set = std::getenv("HOME");
    if (set && std::filesystem::path(set).is_absolute())
        return set;
    const passwd* const user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "/";
}

/// A base folder of the desktop: the variable if it names an absolute path, otherwise its place below the home folder.
std::filesystem::path BaseFolder(const char* variable, const char* belowHome) {
    const char* const set = std::getenv(variable);
    if (set && std::filesystem::path(set).is_absolute())
        return set;
    return HomeFolder() / belowHome;
}

}  // namespace

std::filesystem::path UserDataRoot() {
    return BaseFolder("XDG_DATA_HOME", ".local/share") / "Tanner Quay Rigging" / "Lorebinder";
}

std::filesystem::path UserSettingsFile() {
    return BaseFolder("XDG_CONFIG_HOME", ".config") / "TannerQuayRig" / "Lorebinder.ini";
}

std::filesystem::path SettingsFileIn(const std::filesystem::path& dataRoot) {
    return dataRoot / kSettingsName;
}

std::filesystem::path AutostartFolder() {
    return BaseFolder("XDG_CONFIG_HOME", ".config") / "autostart";
}

bool HasSystemAutostart(const std::filesystem::path& name) {
    const char* const set = std::getenv("XDG_CONFIG_DIRS");
    std::istringstream folders(set && *set ? set : "/etc/xdg");
    std::error_code error;
    for (std::string folder; std::getline(folders, folder, ':');)
        if (std::filesystem::exists(std::filesystem::path(folder) / "autostart" / name, error))
            return true;
    return false;
}

std::filesystem::path ManualFile() {
    constexpr char kManual[] = "ProUsersManual.pdf";
    const std::filesystem::path program = ProgramFolder();
    std::error_code error;
    const std::filesystem::path prefix = program.parent_path().parent_path();  // programs lie in lib/lorebinder
    for (const std::filesystem::path& file : {program / kManual, prefix / "share" / "doc" / "lorebinder" / kManual})
        if (std::filesystem::is_regular_file(file, error))
            return file;
    return {};
}

std::filesystem::path ProgramFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

}  // namespace lore
