#pragma once

#include <string>
#include <string_view>

#include "online/online_world.h"

namespace lore {

/// Says that no account is engaged.
void TellSyncNotEngaged(Prompts& prompts);

/// What became of an attempt to engage an account. Whatever it is, the user has been told.
enum class EngageOutcome {
    InvalidGuid,  ///< the text is to be corrected
    Failed,       ///< the service isn't set up or didn't answer: nothing has changed
    NotFound,     ///< the old account is dropped, and there is no other
    Engaged,
};

/// The dialog "Lorebinder Online Sync Setup": ties this installation to an account.
class SyncSetup {
public:
    explicit SyncSetup(OnlineWorld world) : world_(std::move(world)) {}

    /// The line that tells which account is engaged.
    std::string HeadLine() const;
    const std::string& SyncGUID() const { return world_.settings.Text(Option::SyncGUID); }
    bool SyncAtStart() const { return world_.settings.IsOne(Option::SyncAtStart); }
    bool SyncAtClose() const { return world_.settings.IsOne(Option::SyncAtClose); }

    /// "Engage Sync". Once the service has answered, the account of before and the links of all NoteBooks are gone,
    /// whatever it says.
    EngageOutcome Engage(std::string_view text);
    /// "Setup Links and Sync all NoteBooks": true if the dialog ends and the sync program is to link and sync all.
    bool AskToSyncAll();
    /// "Save": the two boxes.
    void Save(bool syncAtStart, bool syncAtClose);

private:
    OnlineWorld world_;
};

/// The explanation of the two ways to link NoteBooks, and a GUID to show how one looks.
std::string SyncAllExplanation();
inline constexpr char kExampleGuid[] = "{1C5A0E6F-93B2-4d17-A8C4-5F2E7B90D361}";

}  // namespace lore
