#pragma once

#include <functional>
#include <string>

#include "online/online_notebook_choice.h"
#include "online/online_world.h"

namespace lore {

/// Lets the user choose an online NoteBook; true if one was accepted.
using OnlineNoteBookChooser = std::function<bool(OnlineNoteBookChoice&)>;

/// The dialog "Link Desktop NoteBook with an Online NoteBook": ties the open NoteBook to one of the account.
class NoteBookLink {
public:
    explicit NoteBookLink(OnlineWorld world) : world_(std::move(world)) {}

    std::string CurrentNoteBook() const;
    std::string LinkStatus() const { return Link().IsLinked() ? "LINKED!" : "not linked"; }
    const std::string& OnlineNoteBook() const { return Link().OnlineName; }
    bool CanClear() const { return Link().OnlineNoteBookID > 0; }

    /// "Link With Online NoteBook". True if the link is another one now.
    bool LinkWith(const OnlineNoteBookChooser& choose);
    /// "Clear Link": asks, and takes the link out on both sides. True if it is gone.
    bool Clear();

private:
    const SyncLink& Link() const { return world_.book.syncLog.link; }
    bool SetUp(int32_t onlineId);

    OnlineWorld world_;
};

/// The check of the link at the start of a run, once a NoteBook is open: an online NoteBook that has been deleted takes
/// the link with it. Without a service, an answer or a link nothing changes. True if progress is shown, which is left
/// to be hidden a little later.
bool CheckLinkAtStart(const OnlineWorld& world);

/// Frees the online NoteBook of a NoteBook that is being deleted; what comes of it doesn't matter.
void FreeOnlineNoteBook(const OnlineWorld& world, const SyncLink& link, const std::string& noteBookGuid);

}  // namespace lore
