#pragma once

#include <string_view>

#include "base/date_time.h"
#include "bibliography/source.h"

namespace lore {

/// Reads a date as old files hold it: month/day/year in numbers with "/" or "-" between them, or with an English month
/// name, such as "July 12, 2011" or "12-Jul-2011". The year has four digits, or two in numbers: 30 to 99 are 1930 to
/// 1999. A missing day is the first; a time of day that follows is passed over. False, and `date` keeps its value, for
/// anything else.
bool ParseOldTextDate(std::string_view text, DateTime& date);

/// Takes the date of a source of an old file from slot 2. A number between 1000 and 3000 is a year alone. Sets HasDate,
/// SourceDate and YearOnly.
void TakeOldTextDate(CSource& source);

/// True if slot 2 of a source that TakeOldTextDate has read holds a text that is no date: formatting overwrites it.
bool HoldsUnreadDate(const CSource& source);

}  // namespace lore
