#pragma once

#include <filesystem>
#include <string_view>

#include "ports/fault_notice.h"

namespace lore {

/// Writes a page of HTML as a PDF file, through the companion program "lorebinder-pdf" in the program folder. False,
/// and told, if that program is missing or fails; the file then stays as it was.
bool WritePdf(std::string_view html, const std::filesystem::path& file, FaultNotice& faults);

}  // namespace lore
