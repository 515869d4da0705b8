#pragma once

#include <filesystem>

#include "base/record_file.h"
#include "ports/read_context.h"

namespace lore {

/// Reads a file of events, or of reminders, and sets whether it breaks off or holds more than its records. A file that
/// doesn't open isn't damaged; the result says why.
FileResult CheckEventFile(const std::filesystem::path& path, const ReadContext& context, bool& isDamaged);
FileResult CheckReminderFile(const std::filesystem::path& path, const ReadContext& context, bool& isDamaged);

}  // namespace lore
