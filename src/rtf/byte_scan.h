#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lore {

namespace byteScan {

constexpr bool IsMark(unsigned char c) {
    return c == '\\' || c == '{' || c == '}';
}
constexpr bool EndsText(unsigned char c) {
    return c < 0x20 || c >= 0x80 || IsMark(c);
}

#if defined(__SSE2__)
inline __m128i MarksOf(__m128i bytes) {
    const __m128i escape = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
    const __m128i open = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('{'));
    const __m128i close = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('}'));
    return _mm_or_si128(escape, _mm_or_si128(open, close));
}

/// As signed bytes, all from 0x80 up are below 0x20 too.
inline __m128i TextEndsOf(__m128i bytes) {
    return _mm_or_si128(MarksOf(bytes), _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20)));
}
#endif

}  // namespace byteScan

/// The first position from `from` on of a byte that ends a run of plain ASCII: a brace, a backslash, a control byte or
/// one beyond ASCII; the length when there is none.
inline size_t FindTextEnd(std::string_view bytes, size_t from) {
#if defined(__SSE2__)
    for (; from + 16 <= bytes.size(); from += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data() + from));
        const int found = _mm_movemask_epi8(byteScan::TextEndsOf(block));
        if (found != 0)
            return from + static_cast<size_t>(std::countr_zero(static_cast<unsigned>(found)));
    }
#endif
    while (from < bytes.size() && !byteScan::EndsText(static_cast<unsigned char>(bytes[from])))
        ++from;
    return from;
}

/// The first position from `from` on of a brace or a backslash; the length when there is none.
inline size_t FindMark(std::string_view bytes, size_t from) {
#if defined(__SSE2__)
    for (; from + 16 <= bytes.size(); from += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes.data() + from));
        const int found = _mm_movemask_epi8(byteScan::MarksOf(block));
        if (found != 0)
            return from + static_cast<size_t>(std::countr_zero(static_cast<unsigned>(found)));
    }
#endif
    while (from < bytes.size() && !byteScan::IsMark(static_cast<unsigned char>(bytes[from])))
        ++from;
    return from;
}

}  // namespace lore
