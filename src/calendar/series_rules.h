#pragma once

#include <string>
#include <string_view>

#include "calendar/event.h"

namespace lore {

// What the event editor applies while its pattern controls change.

/// Moves RecurrenceEnd forward, never back, so far that a series of this type has room for its second date: by whole
/// days of the full difference. Nothing changes for an N below 1, an impossible date or bounds that aren't valid.
void ApplyMinimumLength(CTmEvent& event, int32_t type);

/// After the start of the series has changed: RecurrenceEnd becomes RecurrenceStart if it lies before it.
void KeepEndAfterStart(CTmEvent& event);

/// What a number field holds after an edit: digits alone, and a number held to 1 to 999 unless the field is empty.
std::string CorrectPatternInput(std::string_view typed);

/// Fills the pattern list of a type with the defaults that follow from Start, if all its slots hold -1.
void FillPatternDefaults(CTmEvent& event, int32_t type);
/// The event has moved from another start: what the patterns still hold of its defaults follows.
void MovePatternDefaults(CTmEvent& event, const DateTime& before);

}  // namespace lore
