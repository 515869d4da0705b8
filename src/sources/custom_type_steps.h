#pragma once

#include <vector>

#include "bibliography/custom_type_list.h"

namespace lore {

/// The lists that the sources take one after the other before they take the edited types, so that a value stays with
/// its field: merged in one step, a field that is renamed and moved would get the value of another one. The list
/// numbers of the edited fields are the positions that they had in the stored type. Empty where that brings no field a
/// value that it wouldn't keep anyway.
std::vector<CustomTypeList> ListsBetween(const CustomTypeList& stored, const std::vector<CCustomSourceType>& edited);

}  // namespace lore
