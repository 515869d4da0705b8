#include "app/help_commands.h"

#include "app/open_rules.h"
#include "app/update_check.h"
#include "base/record_file.h"

namespace lore {

namespace {

constexpr char kManualTitle[] = "User's Manual";
constexpr char kTutorialTitle[] = "Online Tutorial Videos";

bool IsWebPage(const std::string& address) {
    return address.starts_with("http") && JudgeLink(address) == OpenVerdict::Open;
}

}  // namespace

void OpenManual(const HelpWorld& world, const std::filesystem::path& manual) {
    if (manual.empty())
        world.prompts.Message("The manual \"ProUsersManual.pdf\" isn't installed beside the program.", kManualTitle,
                              PromptIcon::Information);
    else if (!world.openFile(manual))
        world.prompts.Message("The system has no program that opens the manual.\n\n" + manual.string(), kManualTitle,
                              PromptIcon::Warning);
}

void OpenTutorial(const HelpWorld& world) {
    const std::string& address = world.settings.Text(Option::TutorialAddress);
    if (!address.empty())
        return OpenHelpPage(world, address, kTutorialTitle);
    world.prompts.Message(
        "No address for a tutorial page is set. It is the value \"TutorialAddress\" in the section \"Options\" of the "
        "settings file; set it while Lorebinder is closed.",
        kTutorialTitle, PromptIcon::Information);
}

void OpenHelpPage(const HelpWorld& world, const std::string& address, const char* title) {
    if (!IsWebPage(address))
        world.prompts.Message("This isn't the address of a web page, so it isn't opened:\n\n" + address, title,
                              PromptIcon::Warning);
    else if (!world.openPage(address))
        world.prompts.Message("The system has no program that opens this page:\n\n" + address, title,
                              PromptIcon::Warning);
}

std::string AboutVersionText() {
    return "<Lorebinder>  -  Version " + ShownVersion(kDataVersion);
}

}  // namespace lore
