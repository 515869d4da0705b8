#pragma once

#include <string>

#include "rtf/document.h"
#include "rtf/paper.h"

namespace lore {

/// What WriteRtf gives, for office programs: with the size of the paper, and without the marks of lists that old rich
/// text controls need beside the tables of lists, and that some office programs take for those of all lists. ReadRtf
/// gives the document again.
std::string WriteOfficeRtf(const Document& document, const Paper& paper = {});

}  // namespace lore
