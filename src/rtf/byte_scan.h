#pragma once

#include "base/find_byte.h"

namespace lore {

/// A brace or a backslash.
struct MarkBytes {
    static constexpr bool Holds(unsigned char c) { return c == '\\' || c == '{' || c == '}'; }
#if defined(LORE_BYTE_BLOCKS)
    static ByteBlock HeldIn(ByteBlock bytes) {
        return (bytes == ByteBlock::All('\\')) | (bytes == ByteBlock::All('{')) | (bytes == ByteBlock::All('}'));
    }
#endif
};

/// What ends a run of plain ASCII: a brace, a backslash, a control byte or one beyond ASCII.
struct TextEndBytes {
    static constexpr bool Holds(unsigned char c) { return c < 0x20 || c >= 0x80 || MarkBytes::Holds(c); }
#if defined(LORE_BYTE_BLOCKS)
    /// As signed bytes, all from 0x80 up are below 0x20 too.
    static ByteBlock HeldIn(ByteBlock bytes) {
        return MarkBytes::HeldIn(bytes) | (bytes < ByteBlock::All(0x20));
    }
#endif
};

}  // namespace lore
