#pragma once

#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/read_context.h"

namespace lore {

/// True for the versions whose data lie directly in "Data Files". A first run, -1, has none.
bool NeedsDataUpgrade(double progVersion);

/// What an upgrade works with.
struct UpgradeJob {
    const DataPaths& data;
    int& maxCategoryID;  ///< moves on with the ids that the conversion of categories gives out
    const ReadContext& context;
    Progress& progress;
    FaultNotice& faults;
};

/// Makes the main NoteBook of notes, lists and attachments that lie directly in "Data Files"; the calendar stays there.
/// The new place is made whole under another name, its categories converted, before it takes its name in one step, and
/// only then the old files go: a crash at any point leaves the old data or the new, and the next call goes on. False,
/// which has been told, if the data are where they were; a main NoteBook that has notes of its own is never touched.
/// A folder without older data is left as it is.
bool UpgradeDataFolder(const UpgradeJob& job);

/// Whether older data lie directly in "Data Files", or an upgrade of them isn't over.
bool HasOlderData(const DataPaths& data);

}  // namespace lore
