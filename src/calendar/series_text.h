#pragma once

#include <string>

#include "calendar/event.h"

namespace lore {

/// The line that tells a series in words: "Repeats every 2 weeks on MON, FRI from 01/03/11 to 03/31/11". Empty if the
/// patterns tell none, numbers outside their names included.
std::string SeriesSummary(const CTmEvent& event);

}  // namespace lore
