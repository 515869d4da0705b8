#include "notes/rtf_scan.h"

#include "base/wide_blocks.h"

namespace lore {

bool AnyTermStart([[maybe_unused]] std::string_view rtf, [[maybe_unused]] size_t& at,
                  [[maybe_unused]] std::string_view term, [[maybe_unused]] PlaceTest test) {
#if defined(__AVX2__)
    return avx2::AnyTermStart(rtf, at, term, test);
#elif defined(__x86_64__)
    return HasWideBlocks() ? avx2::AnyTermStart(rtf, at, term, test) : sse2::AnyTermStart(rtf, at, term, test);
#else
    return false;
#endif
}

bool AnyAsciiEscape([[maybe_unused]] std::string_view rtf, [[maybe_unused]] size_t& at,
                    [[maybe_unused]] PlaceTest test) {
#if defined(__AVX2__)
    return avx2::AnyAsciiEscape(rtf, at, test);
#elif defined(__x86_64__)
    return HasWideBlocks() ? avx2::AnyAsciiEscape(rtf, at, test) : sse2::AnyAsciiEscape(rtf, at, test);
#else
    return false;
#endif
}

}  // namespace lore
