#pragma once

#include <filesystem>
#include <string>

#include "base/file_result.h"
#include "ports/fault_notice.h"

namespace lore {

/// How a file of records shows that it lacks some.
inline constexpr char kNotReadWhole[] = "it breaks off, or holds more than could be read";

/// Keeps what a damaged file holds beside it, before it is written anew, and tells that and what is wrong with it.
/// `what` names the file, such as "The sync log". Of a file that isn't there, nothing is kept or told. A failure is
/// left to the caller to tell, who doesn't write then.
FileResult KeepDamaged(const std::string& what, const std::filesystem::path& file, const std::string& wrong,
                       FaultNotice& faults);

}  // namespace lore
