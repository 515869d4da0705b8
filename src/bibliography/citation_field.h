#pragma once

#include <string>
#include <string_view>

#include "bibliography/source.h"

namespace lore {

/// The text of a slot, empty beyond the end of the list.
std::string_view FieldText(const CSource& source, size_t slot);
/// True if the slot isn't empty; a blank counts.
bool HasField(const CSource& source, size_t slot);
/// The slot's text between its neighbours, or nothing at all for an empty slot. With `ordinal` a bare number becomes
/// its ordinal.
std::string MakeField(const CSource& source, size_t slot, std::string_view before, std::string_view after1,
                      std::string_view after2 = {}, bool ordinal = false);
/// "1st", "12th", "103rd"; an empty text stays empty.
std::string MakeOrdinal(std::string_view text);
/// The date as citations show it: the date in a format (a year alone for YearOnly), or the text typed by hand.
std::string SourceDateText(const CSource& source, std::string_view fullFormat);

/// Appends what MakeField gives for a text.
void AppendField(std::string& out, std::string_view text, std::string_view before, std::string_view after,
                 bool ordinal);

}  // namespace lore
