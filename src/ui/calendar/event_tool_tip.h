#pragma once

#include <QString>

#include "calendar/event.h"

namespace lore {

/// What a tool tip tells of an event, letter for letter, with its blanks and line breaks.
QString EventToolTip(const CTmEvent& event);

}  // namespace lore
