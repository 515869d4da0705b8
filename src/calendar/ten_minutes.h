#pragma once

#include "base/date_time.h"

namespace lore {

// Times of day are chosen in steps of ten minutes.

/// The nearest ten minutes, with seconds 0: minutes 1 to 4 go down, from 55 on up to the next hour, which may be that
/// of the next day. Not valid stays not valid.
DateTime RoundedToTenMinutes(const DateTime& time);
/// The next ten minutes at or after a time, with seconds 0.
DateTime NextTenMinutes(const DateTime& time);
/// What a spin of the minutes makes: a step by one minute, or a wrap of 59, becomes one of ten in its direction.
/// Anything else is taken as typed and is rounded. A change of the day alone keeps the minutes.
DateTime SteppedTime(const DateTime& before, const DateTime& after);

}  // namespace lore
