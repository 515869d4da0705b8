#pragma once

#include "online/online_world.h"

namespace lore {

/// When a NoteBook counts as never synced. On disk; never change.
inline const DateTime kNeverSynced(1900, 1, 1);

/// The open NoteBook's name for the service: "LorebinderMain" for the main one.
std::string DesktopNameOf(const OpenNoteBook& book);

/// Puts name and GUID of the open NoteBook into its link; the GUID of the main one is that of the installation.
void RefreshLink(OpenNoteBook& book);

/// Takes the link out of the open NoteBook's record; what follows from that is done by UpdateLocalSyncLog.
void DropLink(SyncLink& link);

/// Empties the links and logs of all NoteBooks that have one on the disk, and reads that of the open one again.
void ResetAllLinks(const OnlineWorld& world);

/// Brings the log of the open NoteBook in line with its link, after a new or a cleared one, and writes it. A linked
/// NoteBook gets a record for each note that has none; where the online NoteBook isn't `previousId` any more, all
/// records are to be sent anew. One that isn't linked loses link and log.
void UpdateLocalSyncLog(const OnlineWorld& world, int32_t previousId);

}  // namespace lore
