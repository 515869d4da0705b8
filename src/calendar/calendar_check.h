#pragma once

#include <filesystem>

#include "base/record_file.h"
#include "ports/read_context.h"

namespace lore {

/// Reads a file of events, or of reminders, and tells its state. One that doesn't open counts as whole; the result says
/// why.
FileResult CheckEventFile(const std::filesystem::path& path, const ReadContext& context, RecordFileState& state);
FileResult CheckReminderFile(const std::filesystem::path& path, const ReadContext& context, RecordFileState& state);

}  // namespace lore
