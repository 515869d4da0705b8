#pragma once

#include <string>

#include "calendar/event.h"

namespace lore {

/// The line of an event in lists: "02/03/11 (9:05am - 10:00am) - Class". Days alone for an event of whole days.
std::string ShortLine(const CTmEvent& event);

/// What shows when the pointer rests on an event: the short line, or the description wrapped after column 50 and cut
/// at its last line break, but at the tenth at most.
std::string HoverText(const CTmEvent& event);

/// What stands on the bar of an event: "9:05AM - Class", the label alone for an event of whole days.
std::string BarText(const CTmEvent& event);

/// A time of day as "9:05AM".
std::string ClockTime(const DateTime& time);
/// A time of day as "9:05am".
std::string ShortTime(const DateTime& time);

}  // namespace lore
