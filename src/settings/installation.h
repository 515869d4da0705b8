#pragma once

#include "ports/guid_source.h"
#include "settings/settings.h"

namespace lore {

/// Gives the installation its identity, LocalGUID, if it has none. True if it was made now; the caller stores it.
bool EnsureLocalGuid(Settings& settings, GuidSource& guids);

/// The last ids given out. They are common to all NoteBooks of an installation, and the settings keep them.
struct IdCounters {
    int MaxNoteID = 0;
    int MaxAuthorID = 0;
    int MaxCategoryID = 0;
};
IdCounters CountersOf(const Settings& settings);
/// Puts the counters into the settings and the store. They stand on disk after the store's Flush.
void PutCounters(const IdCounters& counters, Settings& settings, SettingsStore& store);

}  // namespace lore
