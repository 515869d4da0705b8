#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "base/file_result.h"
#include "calendar/reminder.h"

namespace lore {

/// A popup by its record and its moment: a reminder that is moved to another time is another popup.
struct PopupKey {
    std::string reminderId;
    int64_t sendTime = 0;  ///< DateTime::Seconds

    auto operator<=>(const PopupKey&) const = default;
};
PopupKey KeyOf(const CTmReminder& reminder);

/// The popups that have been shown, each with the moment at which it comes again; null for one that is done with.
using ShownPopups = std::map<PopupKey, DateTime>;

// AgentShown.dat: FixedDouble version, FixedInt count, then the records without a mark between them:
//
//   CountedString ReminderId
//   DateField SendTime, Again (null: it doesn't come again)
//
// The agent alone writes it, so that Rem.dat has one writer.

/// The file's name below the folder "Data Files".
inline constexpr char kShownFileName[] = "AgentShown.dat";

/// Empties the list first. Records without a moment are left out.
FileResult LoadShownPopups(const std::filesystem::path& path, ShownPopups& shown);
/// Rewrites the file. With a failure the old file stands.
FileResult SaveShownPopups(const std::filesystem::path& path, const ShownPopups& shown);

}  // namespace lore
