#pragma once

// A block of bytes that are compared at once: 32 where a file is compiled for AVX2, or else 16. The two live in
// namespaces of their own, since one program holds both. A file that is compiled for AVX2 must use nothing that others
// define inline too and that is more than a few instructions: the linker keeps one copy for all.

#include <cstddef>
#include <cstring>

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
    using Register = __m256i;
#else
    using Register = __m128i;
#endif
    static constexpr size_t kSize = sizeof(Register);
    using Bytes = signed char __attribute__((vector_size(kSize)));
    Bytes bytes;

    static ByteBlock Of(const char* at) {
        ByteBlock block;
        std::memcpy(&block.bytes, at, kSize);
        return block;
    }
    static ByteBlock All(char c) {
        return {Bytes{} + static_cast<signed char>(c)};
    }
    void Put(char* at) const {
        std::memcpy(at, &bytes, kSize);
    }

    /// One bit for each byte, the first one lowest.
    unsigned Mask() const {
#if defined(__AVX2__)
        return static_cast<unsigned>(_mm256_movemask_epi8(reinterpret_cast<Register>(bytes)));
#else
        return static_cast<unsigned>(_mm_movemask_epi8(reinterpret_cast<Register>(bytes)));
#endif
    }
    /// The lower of each two bytes, as unsigned ones.
    friend ByteBlock Lower(ByteBlock a, ByteBlock b) {
        const auto x = reinterpret_cast<Register>(a.bytes), y = reinterpret_cast<Register>(b.bytes);
#if defined(__AVX2__)
        return {reinterpret_cast<Bytes>(_mm256_min_epu8(x, y))};
#else
        return {reinterpret_cast<Bytes>(_mm_min_epu8(x, y))};
#endif
    }
    friend ByteBlock operator==(ByteBlock a, ByteBlock b) {
        return {a.bytes == b.bytes};
    }
    friend ByteBlock operator<(ByteBlock a, ByteBlock b) {
        return {a.bytes < b.bytes};
    }
    friend ByteBlock operator|(ByteBlock a, ByteBlock b) {
        return {a.bytes | b.bytes};
    }
    friend ByteBlock operator&(ByteBlock a, ByteBlock b) {
        return {a.bytes & b.bytes};
    }
};

}  // namespace LORE_BYTE_BLOCKS

namespace lore {
using LORE_BYTE_BLOCKS::ByteBlock;
}

#endif
