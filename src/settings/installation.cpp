#include "settings/installation.h"

#include <utility>

namespace lore {

bool EnsureLocalGuid(Settings& settings, GuidSource& guids) {
    if (!settings.Text(Option::LocalGUID).empty())
        return false;
    settings.Set(Option::LocalGUID, guids.NewGuid());
    return true;
}

IdCounters CountersOf(const Settings& settings) {
    return {settings.Int(Option::MaxNoteID), settings.Int(Option::MaxAuthorID), settings.Int(Option::MaxCategoryID)};
}

void PutCounters(const IdCounters& counters, Settings& settings, SettingsStore& store) {
    const std::pair<Option, int> values[] = {{Option::MaxNoteID, counters.MaxNoteID},
                                             {Option::MaxAuthorID, counters.MaxAuthorID},
                                             {Option::MaxCategoryID, counters.MaxCategoryID}};
    for (const auto& [option, value] : values) {
        settings.Set(option, value);
        settings.Save(store, option);
    }
}

}  // namespace lore
