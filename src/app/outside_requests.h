#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "ports/instance_channel.h"

namespace lore {

/// Stands in a request to capture the selected text into a new note.
inline constexpr char kCaptureRequest[] = "TQR_Lorebinder_GetSelectedText";

/// Stands before the id of a reminder in a request to show what it is about.
inline constexpr char kReminderRequest[] = "TQR_Lorebinder_ShowReminder";

/// What the agent tells the program: to close, and to read the agent's options again.
inline constexpr char kCloseProgram[] = "TQRCLOSELOREBINDER";
inline constexpr char kCheckAgentOptions[] = "TQRCHECKAGENTOPTIONS";

/// The text that a command line hands on: empty, the capture request, the request for a reminder, or the full path of a
/// file, since the running instance works in another folder. A text that tells the program to leave out the sync at
/// start is no file.
std::string RequestOfCommandLine(std::string_view file, bool capture, const std::filesystem::path& workingFolder,
                                 std::string_view reminder = {});

/// What requests from outside make the window do. None may be empty but the update check.
struct RequestHooks {
    std::function<void()> restore;       ///< shows the window as it was before it was minimised
    std::function<void()> bringToFront;  ///< the same, and gives it the focus
    std::function<void(const std::filesystem::path&)> importFile;
    std::function<void()> capture;  ///< pastes the clipboard into the open note editor, or into a new note
    std::function<void()> close;    ///< closes the main window with all its steps
    std::function<void()> checkAgentOptions;
    std::function<void(const std::string& reminderId)> showReminder;  ///< shows what a reminder is about
    std::function<void()> checkForUpdates = {};
};

/// Files and commands that come from the command line, from a second process or from the agent. What comes before the
/// start is over waits for its end.
class OutsideRequests {
public:
    explicit OutsideRequests(RequestHooks hooks) : hooks_(std::move(hooks)) {}

    /// A capture request, one for a reminder, or the path of a file to import.
    void OpenDocumentFile(std::string_view text);
    /// The end of the start: what waits is done, a file before a capture, that before a reminder. Without any it is
    /// time for the update check.
    void FinishStartup();
    /// A message of another process; gives the answer to it.
    uint32_t Receive(const InstanceMessage& message);

private:
    uint32_t RunCommand(std::string_view text) const;

    RequestHooks hooks_;
    bool starting_ = true;
    bool pendingCapture_ = false;
    std::string pendingPath_, pendingReminder_;
};

}  // namespace lore
