#pragma once

#include <bit>
#include <cstddef>
#include <string_view>

#include "base/byte_block.h"

namespace lore {

/// The first position from `from` on of a byte of the set; the length when there is none. The set is a type that says
/// by Holds(unsigned char) what is in it, and by HeldIn(ByteBlock) the same of a block at once: all bits of a byte that
/// it holds are set.
template <typename Set>
inline size_t FindByte(std::string_view bytes, size_t from) {
#if defined(LORE_BYTE_BLOCKS)
    for (; from + ByteBlock::kSize <= bytes.size(); from += ByteBlock::kSize) {
        const unsigned found = Set::HeldIn(ByteBlock::Of(bytes.data() + from)).Mask();
        if (found != 0)
            return from + static_cast<size_t>(std::countr_zero(found));
    }
#endif
    while (from < bytes.size() && !Set::Holds(static_cast<unsigned char>(bytes[from])))
        ++from;
    return from;
}

}  // namespace lore
