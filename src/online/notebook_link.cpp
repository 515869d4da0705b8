#include "online/notebook_link.h"

#include "base/record_file.h"
#include "notes/sync_stamp.h"
#include "online/link_record.h"
#include "online/service_call.h"

namespace lore {

namespace {

constexpr char kUpdating[] = "Attempting to Update Online NoteBook Link....";

/// Whether a call has changed the link; told if it hasn't.
template <typename Called>
bool HasChanged(const OnlineWorld& world, const Called& called) {
    if (!called.Ok())
        return false;
    if (called.result && called.result->databaseID > 0)
        return true;
    world.prompts.Message("There was an error in updating the Online NoteBook's link status.  Please try again.",
                          "Update Error", PromptIcon::Warning);
    return false;
}

}  // namespace

std::string NoteBookLink::CurrentNoteBook() const {
    return DesktopNameOf(world_.book);
}

bool NoteBookLink::LinkWith(const OnlineNoteBookChooser& choose) {
    if (!HasService(world_))
        return false;
    auto called =
        CallServiceOnce(world_, "Contacting Lorebinder Online Server....",
                        [&](DesktopCommService& service, const std::stop_token& stop) {
                            return service.GetNoteBooksInfo(world_.settings.Text(Option::SyncGUID), false, stop);
                        });
    if (!called.Ok())
        return false;
    NoteBooksInfo info = std::move(called.result).value_or(NoteBooksInfo{});
    if (!info.foundUser) {
        TellUnknownAccount(world_);
        return false;
    }
    OnlineNoteBookChoice choice(world_, std::move(info.noteBooksList), Link().OnlineNoteBookID, false);
    return choose(choice) && choice.Selected() >= 0 && SetUp(choice.Chosen());
}

bool NoteBookLink::SetUp(int32_t onlineId) {
    RefreshLink(world_.book);
    const LinkRequest request{onlineId, Link().OnlineNoteBookID, world_.settings.Text(Option::LocalGUID),
                              Link().NoteBookGuid, Link().DesktopName};
    const auto called =
        CallServiceOnce(world_, kUpdating, [&](DesktopCommService& service, const std::stop_token& stop) {
            return service.SetupLinkWithOnlineNoteBook(request, stop);
        });
    if (!HasChanged(world_, called))
        return false;
    SyncLink& link = world_.book.syncLog.link;
    link.Linked = kStoredTrue;
    link.OnlineNoteBookID = called.result->databaseID;
    link.OnlineName = called.result->name;
    link.LastSync = kNeverSynced;
    UpdateLocalSyncLog(world_, request.prevOnlineNoteBookID);
    return true;
}

bool NoteBookLink::Clear() {
    if (!CanClear() ||
        world_.prompts.Ask(
            "Are you sure you wish to remove that link between your Desktop NoteBook and Online NoteBook?",
            "Remove Link?") != PromptAnswer::Yes ||
        !HasService(world_))
        return false;
    const auto called =
        CallServiceOnce(world_, kUpdating, [&](DesktopCommService& service, const std::stop_token& stop) {
            return service.ClearLinkWithOnlineNoteBook(Link().OnlineNoteBookID, world_.book.database.guid, stop);
        });
    if (!HasChanged(world_, called))
        return false;
    SyncLink& link = world_.book.syncLog.link;
    const int32_t previous = link.OnlineNoteBookID;
    DropLink(link);
    link.NoteBookGuid.clear();
    UpdateLocalSyncLog(world_, previous);
    return true;
}

bool CheckLinkAtStart(const OnlineWorld& world) {
    SyncLink& link = world.book.syncLog.link;
    if (link.OnlineNoteBookID <= 0 || !world.service)
        return false;
    const auto called = CallService(world, "Checking LorebinderOnline Server....",
                                    [&](DesktopCommService& service, const std::stop_token& stop) {
                                        return service.GetNoteBookInfo(link.OnlineNoteBookID, stop);
                                    });
    if (!called.Ok() || !called.result)
        return true;
    if (called.result->databaseID > 0) {
        link.OnlineName = called.result->name;
        RefreshLink(world.book);
        WriteSyncLog(world.book, world.faults);
        return true;
    }
    world.prompts.Message("The Online NoteBook has been deleted, so the link is being cleared.",
                          "Online NoteBook Deleted", PromptIcon::Information);
    world.progress.SetMessage("Updating NoteBook Link Status....");
    const int32_t previous = link.OnlineNoteBookID;
    DropLink(link);
    UpdateLocalSyncLog(world, previous);
    return true;
}

void FreeOnlineNoteBook(const OnlineWorld& world, const SyncLink& link, const std::string& noteBookGuid) {
    if (!world.service)
        return;
    RunBeside(world.background, "Attempting to Update Online NoteBook Link....", [&](const std::stop_token& stop) {
        world.service->ClearLinkWithOnlineNoteBook(link.OnlineNoteBookID, noteBookGuid, stop);
    });
}

}  // namespace lore
