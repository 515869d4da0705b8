#pragma once

namespace lore {

#if defined(__x86_64__)
/// Whether this processor can run what is compiled for AVX2.
inline bool HasWideBlocks() {
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
}
#endif

}  // namespace lore
