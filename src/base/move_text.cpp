#include "base/move_text.h"

#include "base/wide_blocks.h"

namespace lore {

void MoveText([[maybe_unused]] char*& out, [[maybe_unused]] const char*& at, [[maybe_unused]] const char* end) {
#if defined(__AVX2__)
    avx2::MoveText(out, at, end);
#elif defined(__x86_64__)
    HasWideBlocks() ? avx2::MoveText(out, at, end) : sse2::MoveText(out, at, end);
#endif
}

}  // namespace lore
