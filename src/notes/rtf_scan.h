#pragma once

#include <cstddef>
#include <string_view>

namespace lore {

/// Whether a place is one.
using PlaceTest = bool (*)(std::string_view rtf, size_t at, std::string_view term);

// Fast passes over the bytes of rich text. Each asks the test about all places that may be ones, and ends with true at
// the first that is. `at` begins at 0, and stands at what is too short for a block when none is: the caller looks there
// byte by byte.

/// The places where a term may start: its first byte, and behind it the second one or what may be markup.
bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test);

/// The backslashes of escapes that may concern ASCII.
bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test);

#if defined(__x86_64__)
// For each of the two sizes of a block, of which the processor's is chosen.
namespace sse2 {
bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test);
bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test);
}  // namespace sse2
namespace avx2 {
bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test);
bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test);
}  // namespace avx2
#endif

}  // namespace lore
