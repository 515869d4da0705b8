#pragma once

#include <bit>
#include <cstddef>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lore {

/// The first position from `from` on of a byte of the set; the length when there is none. The set is a type that says
/// by Holds(unsigned char) what is in it, and by HeldIn(__m128i) the same of sixteen bytes at once: all bits of a byte
/// that it holds are set.
template <typename Set>
inline size_t FindByte(std::string_view bytes, size_t from) {
#if defined(__SSE2__)
    for (; from + 16 <= bytes.size(); from += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data() + from));
        const int found = _mm_movemask_epi8(Set::HeldIn(block));
        if (found != 0)
            return from + static_cast<size_t>(std::countr_zero(static_cast<unsigned>(found)));
    }
#endif
    while (from < bytes.size() && !Set::Holds(static_cast<unsigned char>(bytes[from])))
        ++from;
    return from;
}

}  // namespace lore
