#include "agent/program_link.h"

#include "app/outside_requests.h"

namespace lore {

namespace {
constexpr char kProgram[] = "lorebinder";
}

ProgramLink::ProgramLink(CompanionPlaces places, ProcessLauncher& companions)
    : places_(std::move(places)), channel_(kProgramRole, places_.dataRoot), companions_(companions) {}

bool ProgramLink::Hand(const std::string& request, const std::vector<std::string>& options) {
    if (channel_.SendToInstance(request, true))
        return true;
    std::vector<std::string> arguments = PlaceArguments(places_);
    arguments.insert(arguments.end(), options.begin(), options.end());
    return !companions_.StartCompanion(kProgram, arguments);
}

bool ProgramLink::Open(const std::string& reminderId) {
    return reminderId.empty() ? Hand({}, {}) : Hand(kReminderRequest + reminderId, {"--reminder", reminderId});
}

bool ProgramLink::Capture() {
    return Hand(kCaptureRequest, {"--capture"});
}

void ProgramLink::Close() {
    channel_.SendCommand(kCloseProgram);
}

void ProgramLink::CheckAgentOptions() {
    channel_.SendCommand(kCheckAgentOptions);
}

}  // namespace lore
