#pragma once

// A block of bytes that are compared at once: 32 where a file is compiled for AVX2, or else 16. The two live in
// namespaces of their own, since one program holds both. A file that is compiled for AVX2 must use nothing that others
// define inline too and that is more than a few instructions: the linker keeps one copy for all.

#include <cstddef>

#if defined(__AVX2__)
#include <immintrin.h>
#define LORE_BYTE_BLOCKS lore::avx2
#elif defined(__SSE2__)
#include <emmintrin.h>
#define LORE_BYTE_BLOCKS lore::sse2
#endif

#if defined(LORE_BYTE_BLOCKS)

namespace LORE_BYTE_BLOCKS {

/// Each comparison gives a block with all bits of a byte set where it holds. Bytes compare as signed ones.
struct ByteBlock {
#if defined(__AVX2__)
    static constexpr size_t kSize = 32;
    __m256i bits;

    static ByteBlock Of(const char* at) {
        return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(at))};
    }
    static ByteBlock All(char c) {
        return {_mm256_set1_epi8(c)};
    }
    unsigned Mask() const {
        return static_cast<unsigned>(_mm256_movemask_epi8(bits));
    }
    void Put(char* at) const {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(at), bits);
    }
    /// The lower of each two bytes, as unsigned ones.
    friend ByteBlock Lower(ByteBlock a, ByteBlock b) {
        return {_mm256_min_epu8(a.bits, b.bits)};
    }
    friend ByteBlock operator==(ByteBlock a, ByteBlock b) {
        return {_mm256_cmpeq_epi8(a.bits, b.bits)};
    }
    friend ByteBlock operator<(ByteBlock a, ByteBlock b) {
        return {_mm256_cmpgt_epi8(b.bits, a.bits)};
    }
    friend ByteBlock operator|(ByteBlock a, ByteBlock b) {
        return {_mm256_or_si256(a.bits, b.bits)};
    }
    friend ByteBlock operator&(ByteBlock a, ByteBlock b) {
        return {_mm256_and_si256(a.bits, b.bits)};
    }
#else
    static constexpr size_t kSize = 16;
    __m128i bits;

    static ByteBlock Of(const char* at) {
        return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))};
    }
    static ByteBlock All(char c) {
        return {_mm_set1_epi8(c)};
    }
    /// One bit for each byte, the first one lowest.
    unsigned Mask() const {
        return static_cast<unsigned>(_mm_movemask_epi8(bits));
    }
    void Put(char* at) const {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(at), bits);
    }
    /// The lower of each two bytes, as unsigned ones.
    friend ByteBlock Lower(ByteBlock a, ByteBlock b) {
        return {_mm_min_epu8(a.bits, b.bits)};
    }
    friend ByteBlock operator==(ByteBlock a, ByteBlock b) {
        return {_mm_cmpeq_epi8(a.bits, b.bits)};
    }
    friend ByteBlock operator<(ByteBlock a, ByteBlock b) {
        return {_mm_cmplt_epi8(a.bits, b.bits)};
    }
    friend ByteBlock operator|(ByteBlock a, ByteBlock b) {
        return {_mm_or_si128(a.bits, b.bits)};
    }
    friend ByteBlock operator&(ByteBlock a, ByteBlock b) {
        return {_mm_and_si128(a.bits, b.bits)};
    }
#endif
};

}  // namespace LORE_BYTE_BLOCKS

#endif
