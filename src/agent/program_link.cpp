#include "agent/program_link.h"

#include "app/outside_requests.h"

namespace lore {

namespace {
constexpr char kProgram[] = "lorebinder";
}

ProgramLink::ProgramLink(CompanionPlaces places, ProcessLauncher& companions, std::function<void()> failed)
    : places_(std::move(places)),
      channel_(kProgramRole, places_.dataRoot),
      companions_(companions),
      failed_(std::move(failed)) {}

ProgramLink::~ProgramLink() = default;

void ProgramLink::Hand(const std::string& request, const std::vector<std::string>& options) {
    beside_.Run([this, request, options] {
        if (!channel_.SendToInstance(request, true))
            QMetaObject::invokeMethod(&here_, [this, options] { Start(options); });
    });
}

void ProgramLink::Start(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = PlaceArguments(places_);
    arguments.insert(arguments.end(), options.begin(), options.end());
    if (companions_.StartCompanion(kProgram, arguments))
        failed_();
}

void ProgramLink::Command(const char* text) {
    beside_.Run([this, text] { channel_.SendCommand(text); });
}

void ProgramLink::Open(const std::string& reminderId) {
    reminderId.empty() ? Hand({}, {}) : Hand(kReminderRequest + reminderId, {"--reminder", reminderId});
}

void ProgramLink::Capture() {
    Hand(kCaptureRequest, {"--capture"});
}

void ProgramLink::Close() {
    Command(kCloseProgram);
}

void ProgramLink::CheckAgentOptions() {
    Command(kCheckAgentOptions);
}

}  // namespace lore
