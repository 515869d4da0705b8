#include "online/sync_setup.h"

#include "base/text.h"
#include "online/link_record.h"
#include "online/service_call.h"

namespace lore {

namespace {

constexpr size_t kGuidLength = 38;

bool IsSyncGuid(std::string_view text) {
    return text.size() == kGuidLength && text.front() == '{' && text.back() == '}';
}

}  // namespace

void TellSyncNotEngaged(Prompts& prompts) {
    prompts.Message("The Sync feature has not been engaged to a Lorebinder Online Account.", "Sync NOT Engaged",
                    PromptIcon::Warning);
}

std::string SyncSetup::HeadLine() const {
    if (!world_.settings.IsSyncEngaged())
        return "SYNC NOT ENGAGED";
    const std::string& nickname = world_.settings.Text(Option::Nickname);
    return nickname.empty() ? "LINKED TO ONLINE ACCOUNT" : "LINKED TO ACCOUNT:  " + nickname;
}

EngageOutcome SyncSetup::Engage(std::string_view text) {
    const std::string guid(Trim(text));
    if (!IsSyncGuid(guid)) {
        world_.prompts.Message(
            "Invalid Sync GUID.\n\nThe GUID must be 38 characters long and begin with '{' and end with '}'.  Please "
            "see example.",
            "Invalid Sync GUID", PromptIcon::Warning);
        return EngageOutcome::InvalidGuid;
    }
    if (!HasService(world_))
        return EngageOutcome::Failed;
    const auto called =
        CallService(world_, "Contacting Lorebinder Online Server....",
                    [&](DesktopCommService& service, const std::stop_token& stop) {
                        return service.EngageSyncWithOnlineAccount(guid, world_.settings.Text(Option::LocalGUID), stop);
                    });
    if (!called.Ok()) {
        world_.progress.Hide();
        TellFailedCall(world_, called.error);
        return EngageOutcome::Failed;
    }
    world_.progress.SetMessage("Linking with Lorebinder Online Account....");
    world_.settings.Set(Option::SyncGUID, std::string());
    world_.settings.Set(Option::Nickname, std::string());
    world_.settings.Set(Option::SyncEngaged, 0);
    ResetAllLinks(world_);
    world_.progress.Hide();
    const ValidationInfo info = called.result.value_or(ValidationInfo{});
    const bool found = info.UserID > 0;
    if (found) {
        world_.settings.Set(Option::SyncGUID, guid);
        world_.settings.Set(Option::Nickname, info.UserNickname);
        world_.settings.Set(Option::SyncEngaged, 1);
    }
    world_.storeSettings();
    if (found)
        world_.prompts.Message(
            "Your Sync GUID was found!\n\nYour now are successfully linked with your Lorebinder Online account!",
            "Sync GUID Found!!", PromptIcon::Information);
    else
        TellUnknownAccount(world_);
    return found ? EngageOutcome::Engaged : EngageOutcome::NotFound;
}

bool SyncSetup::AskToSyncAll() {
    if (!world_.settings.IsSyncEngaged()) {
        TellSyncNotEngaged(world_.prompts);
        return false;
    }
    return world_.prompts.Ask(
               "Lorebinder must be closed inorder to run the sync, it will restart once the sync has finished.\n\nDo "
               "you wish to continue with the sync?",
               "Continue?") == PromptAnswer::Yes;
}

void SyncSetup::Save(bool syncAtStart, bool syncAtClose) {
    world_.settings.Set(Option::SyncAtStart, syncAtStart ? 1 : 0);
    world_.settings.Set(Option::SyncAtClose, syncAtClose ? 1 : 0);
    world_.storeSettings();
}

std::string SyncAllExplanation() {
    return "The Lorebinder Sync feature allows you to link each Desktop NoteBook with a NoteBook in your Online "
           "account. There are two ways to link up your NoteBooks:"
           "\n\nA: You can link up each Desktop NoteBook separately by selecting \"Link Current NoteBook\" from the "
           "Sync Menu."
           "\n\nB: Or, you can click the button below to have all your Desktop NoteBooks linked and synced with Online "
           "NoteBooks that have the same names.  It will also create any needed NoteBooks in both your Desktop "
           "database and Online account.";
}

}  // namespace lore
