#pragma once

#include "base/find_byte.h"

namespace lore {

/// A brace or a backslash.
struct MarkBytes {
    static constexpr bool Holds(unsigned char c) { return c == '\\' || c == '{' || c == '}'; }
#if defined(__SSE2__)
    static __m128i HeldIn(__m128i bytes) {
        const __m128i escape = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
        const __m128i open = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('{'));
        const __m128i close = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('}'));
        return _mm_or_si128(escape, _mm_or_si128(open, close));
    }
#endif
};

/// What ends a run of plain ASCII: a brace, a backslash, a control byte or one beyond ASCII.
struct TextEndBytes {
    static constexpr bool Holds(unsigned char c) { return c < 0x20 || c >= 0x80 || MarkBytes::Holds(c); }
#if defined(__SSE2__)
    /// As signed bytes, all from 0x80 up are below 0x20 too.
    static __m128i HeldIn(__m128i bytes) {
        return _mm_or_si128(MarkBytes::HeldIn(bytes), _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20)));
    }
#endif
};

}  // namespace lore
