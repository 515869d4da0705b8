#include "platform/instance/agent_process.h"

#include <string>
#include <system_error>
#include <unistd.h>

#include "base/file_io.h"
#include "platform/places.h"

namespace lore {

namespace {

/// A path as a desktop entry wants it in a command: quoted, with what would mean something else escaped. The entry as a
/// whole escapes backslashes once more.
std::string QuotedForEntry(const std::string& path) {
    std::string quoted = "\"";
    for (const char c : path) {
        if (c == '"' || c == '`' || c == '$')
            quoted += "\\\\";
        if (c == '\\')
            quoted += "\\\\\\";
        if (c == '%')
            quoted += '%';
        quoted += c;
    }
    return quoted + '"';
}

std::string EntryHead() {
    return "[Desktop Entry]\nType=Application\nName=Lorebinder Agent\nComment=Shows the reminders of Lorebinder\n";
}

std::string EntryOf(const std::filesystem::path& program, const std::vector<std::string>& options) {
    std::string command = QuotedForEntry(program.string()) + " Lorebinder";
    for (const std::string& option : options)
        command += " " + QuotedForEntry(option);
    return EntryHead() + "TryExec=" + program.string() + "\nExec=" + command + "\nNoDisplay=true\n";
}

}  // namespace

AgentProcess::AgentProcess(std::filesystem::path program, std::filesystem::path autostart,
                           const std::filesystem::path& dataRoot, ProcessLauncher& companions,
                           std::vector<std::string> options)
    : program_(std::move(program)),
      autostart_(std::move(autostart)),
      options_(std::move(options)),
      channel_(kAgentRole, dataRoot),
      companions_(companions) {}

bool AgentProcess::IsInstalled() const {
    return ::access(program_.c_str(), X_OK) == 0;
}

bool AgentProcess::StartWithSession(bool starts) {
    if (!starts && !HasSystemAutostart(autostart_.filename()))
        return RemoveFile(autostart_).Ok();
    if (starts && !IsInstalled())
        return true;
    std::error_code error;
    std::filesystem::create_directories(autostart_.parent_path(), error);
    // Whatever the system's entry says, a hidden one in its place starts nothing.
    return WriteFileAtomically(autostart_, starts ? EntryOf(program_, options_) : EntryHead() + "Hidden=true\n").Ok();
}

}  // namespace lore
