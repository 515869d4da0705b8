#include "online/service_call.h"

namespace lore {

bool HasService(const OnlineWorld& world) {
    if (!world.service)
        world.prompts.Message(kNoService, "Online Service Not Set Up", PromptIcon::Information);
    return world.service != nullptr;
}

void TellFailedCall(const OnlineWorld& world, SoapError error) {
    if (error != SoapError::Stopped)
        world.prompts.Message(
            "There was an error in connecting to the server.  Please check your internet connection and try again.",
            "Connection Error", PromptIcon::Warning);
}

void TellUnknownAccount(const OnlineWorld& world) {
    world.prompts.Message("Your Sync GUID could not be found.\n\nPlease check to make sure it was entered correctly.",
                          "Sync GUID not valid", PromptIcon::Warning);
}

}  // namespace lore
