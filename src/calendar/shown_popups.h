#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <limits>
#include <map>
#include <string>

#include "base/file_result.h"
#include "calendar/reminder.h"

namespace lore {

/// A popup by its record and its moment: a reminder that is moved to another time is another popup. Records may lack an
/// id or share one; those of one moment are told apart by their order in the file.
struct PopupKey {
    std::string reminderId;
    int64_t sendTime = 0;  ///< DateTime::Seconds
    int32_t number = 0;    ///< how many of the same id and moment stand before it

    auto operator<=>(const PopupKey&) const = default;
};
PopupKey KeyOf(const CTmReminder& reminder, int32_t number = 0);

/// The key after all those of the same id and moment in a map.
template <typename Map>
PopupKey NextKey(const Map& map, PopupKey key) {
    key.number = std::numeric_limits<int32_t>::max();
    const auto behind = map.upper_bound(key);
    key.number = 0;
    if (behind == map.begin())
        return key;
    const PopupKey& last = std::prev(behind)->first;
    if (last.reminderId == key.reminderId && last.sendTime == key.sendTime)
        key.number = last.number + 1;
    return key;
}

/// The popups that have been shown, each with the moment at which it comes again, that of its coming while it stands
/// unanswered; null for one that is done with.
using ShownPopups = std::map<PopupKey, DateTime>;

// AgentShown.dat: FixedDouble version, FixedInt count, then the records without a mark between them:
//
//   CountedString ReminderId
//   DateField SendTime, Again (null: it doesn't come again)
//
// Those of one id and moment stand in the order of their numbers.
//
// The agent alone writes it, so that Rem.dat has one writer.

/// The file's name below the folder "Data Files".
inline constexpr char kShownFileName[] = "AgentShown.dat";

/// Empties the list first. Records without a moment are left out.
FileResult LoadShownPopups(const std::filesystem::path& path, ShownPopups& shown);
/// Rewrites the file. With a failure the old file stands.
FileResult SaveShownPopups(const std::filesystem::path& path, const ShownPopups& shown);

}  // namespace lore
