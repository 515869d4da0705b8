#pragma once

namespace lore {

/// Lets screen readers see the days of the calendar as cells with a text. Safe to call more than once.
void InstallCalendarAccessibility();

}  // namespace lore
