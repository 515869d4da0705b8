#include "notes/rtf_scan.h"

#if defined(__x86_64__)
namespace lore::avx2 {
bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test);
bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test);
}  // namespace lore::avx2
#endif
#if defined(__SSE2__) && !defined(__AVX2__)
#include "notes/rtf_scan_blocks.h"
#endif

namespace lore {

#if defined(__AVX2__)

bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test) {
    return avx2::AnyTermStart(rtf, at, term, test);
}

bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test) {
    return avx2::AnyAsciiEscape(rtf, at, test);
}

#elif defined(__x86_64__)

namespace {
const bool kHasWideBlocks = __builtin_cpu_supports("avx2") != 0;
}

bool AnyTermStart(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test) {
    return kHasWideBlocks ? avx2::AnyTermStart(rtf, at, term, test) : sse2::AnyTermStart(rtf, at, term, test);
}

bool AnyAsciiEscape(std::string_view rtf, size_t& at, PlaceTest test) {
    return kHasWideBlocks ? avx2::AnyAsciiEscape(rtf, at, test) : sse2::AnyAsciiEscape(rtf, at, test);
}

#else

bool AnyTermStart(std::string_view, size_t&, std::string_view, PlaceTest) {
    return false;
}

bool AnyAsciiEscape(std::string_view, size_t&, PlaceTest) {
    return false;
}

#endif

}  // namespace lore
