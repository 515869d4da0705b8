#pragma once

#include <cstdint>

namespace lore {

// How many bytes one packed byte may become. What is written stays below what is read: whoever packs more closely has
// made a file that no reader takes.

/// Of any file. Deflate reaches 1,032, for endless zeros; what a person packs stays far below.
inline constexpr uint64_t kMostPerByteRead = 1000;
inline constexpr uint64_t kMostPerByteWritten = 500;
static_assert(kMostPerByteWritten < kMostPerByteRead);

/// Of a large record file, which stands in memory whole, as no attachment does.
inline constexpr uint64_t kMostOfRecordsRead = 100;
inline constexpr uint64_t kMostOfRecordsWritten = 90;
static_assert(kMostOfRecordsWritten < kMostOfRecordsRead && kMostOfRecordsRead < kMostPerByteRead);

}  // namespace lore
