#pragma once

#include <string>
#include <string_view>

#include "bibliography/source.h"

namespace lore {

/// The text of a slot, empty beyond the end of the list.
std::string_view FieldText(const CSource& source, size_t slot);
/// True if the slot isn't empty; a blank counts.
bool HasField(const CSource& source, size_t slot);
/// The date as citations show it: the date in a format (a year alone for YearOnly), or the text typed by hand.
std::string SourceDateText(const CSource& source, std::string_view fullFormat);

/// Appends a text between its neighbours, or nothing at all for an empty one. With `ordinal` a bare number becomes its
/// ordinal: "1st", "12th", "103rd".
void AppendField(std::string& out, std::string_view text, std::string_view before, std::string_view after,
                 bool ordinal);

/// Cuts a citation to what a field of a record holds; a character of UTF-8 is cut off whole.
void CutToRecord(std::string& citation);

}  // namespace lore
