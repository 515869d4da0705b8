#pragma once

// MoveText by pairs of blocks. One file includes this for each size of a block, and so defines it.

#include <cstdint>
#include <cstring>

#include "base/byte_block.h"
#include "base/move_text.h"

#if defined(LORE_BYTE_BLOCKS)

namespace LORE_BYTE_BLOCKS {

void MoveText(char*& out, const char*& at, const char* end) {
    constexpr auto kSize = static_cast<long>(ByteBlock::kSize);
    const ByteBlock last = ByteBlock::All(kEndOfText);
    for (; end - at >= 2 * kSize; at += 2 * kSize, out += 2 * kSize) {
        const ByteBlock first = ByteBlock::Of(at), second = ByteBlock::Of(at + kSize), lower = Lower(first, second);
        if ((Lower(lower, last) == lower).Mask() != 0) {
            const uint64_t inFirst = (Lower(first, last) == first).Mask();
            const uint64_t inSecond = (Lower(second, last) == second).Mask();
            const int length = __builtin_ctzll(inFirst | inSecond << kSize);
            std::memmove(out, at, static_cast<size_t>(length));
            at += length;
            out += length;
            return;
        }
        first.Put(out);
        second.Put(out + kSize);
    }
}

}  // namespace LORE_BYTE_BLOCKS

#endif
