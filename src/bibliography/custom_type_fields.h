#pragma once

#include <vector>

#include "bibliography/custom_type.h"

namespace lore {

/// The fields of a new type: authors, date, title and one user field.
std::vector<CCustomSourceField> DefaultCustomFields();
/// A reset type: no GUID, no name, the default fields, the date now (UTC).
CCustomSourceType MakeCustomType(const DateTime& nowUtc);

size_t CountUserFields(const CCustomSourceType& type);
/// Empties the value of every user field.
void ClearValues(CCustomSourceType& type);
/// The definition with the values of a source's old copy: by name ignoring case (the first user field of that name),
/// otherwise by the count among the user fields, otherwise empty.
CCustomSourceType MergeCustomType(const CCustomSourceType& definition, const CCustomSourceType& oldCopy);

}  // namespace lore
