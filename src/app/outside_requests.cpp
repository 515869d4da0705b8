#include "app/outside_requests.h"

#include <algorithm>
#include <utility>

#include "online/sync_launch.h"

namespace lore {

namespace {

constexpr size_t kLongestText = 1023;

bool Holds(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

}  // namespace

std::string RequestOfCommandLine(std::string_view file, bool capture, const std::filesystem::path& workingFolder,
                                 std::string_view reminder) {
    if (capture)
        return kCaptureRequest;
    if (!reminder.empty())
        return kReminderRequest + std::string(reminder);
    if (file.empty() || BypassesSync(file))
        return {};
    return (workingFolder / file).lexically_normal().string();
}

void OutsideRequests::OpenDocumentFile(std::string_view text) {
    if (Holds(text, kCaptureRequest)) {
        pendingCapture_ = starting_;
        hooks_.bringToFront();
        if (!starting_)
            hooks_.capture();
        return;
    }
    if (const size_t at = text.find(kReminderRequest); at != std::string_view::npos) {
        const std::string id(text.substr(at + std::string_view(kReminderRequest).size()));
        hooks_.bringToFront();
        if (starting_)
            pendingReminder_ = id;
        else
            hooks_.showReminder(id);
        return;
    }
    if (starting_) {
        pendingPath_ = text;
        return;
    }
    hooks_.restore();
    hooks_.importFile(text);
}

void OutsideRequests::FinishStartup() {
    starting_ = false;
    const std::string path = std::exchange(pendingPath_, {});
    if (!path.empty())
        hooks_.importFile(path);
    else if (std::exchange(pendingCapture_, false))
        hooks_.capture();
    else if (const std::string id = std::exchange(pendingReminder_, {}); !id.empty())
        hooks_.showReminder(id);
    else if (hooks_.checkForUpdates)
        hooks_.checkForUpdates();
}

uint32_t OutsideRequests::Receive(const InstanceMessage& message) {
    switch (message.tag) {
        case InstanceMessage::kIsMe:
            return 1;
        case InstanceMessage::kActivate:
            hooks_.bringToFront();
            return 1;
        case InstanceMessage::kDocument:
            if (!message.text.empty())
                OpenDocumentFile(std::string_view(message.text).substr(0, kLongestText));
            return 1;
        default:
            return RunCommand(message.text);
    }
}

uint32_t OutsideRequests::RunCommand(std::string_view text) const {
    const std::pair<const char*, const std::function<void()>&> commands[] = {
        {kCloseProgram, hooks_.close}, {kCheckAgentOptions, hooks_.checkAgentOptions}};
    for (const auto& [word, run] : commands) {
        if (Holds(text, word)) {
            run();
            return 1;
        }
    }
    return 0;
}

}  // namespace lore
