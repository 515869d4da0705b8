#pragma once

namespace lore {

/// The last of the control bytes; the end of a text on disk.
constexpr char kEndOfText = 0x1A;

/// Moves bytes from `at` down to `out` and both on, as far as none is 0x1A or below and `end` isn't near: texts hold
/// few of these beside their line ends. `out` may be `at`.
void MoveText(char*& out, const char*& at, const char* end);

#if defined(__x86_64__)
// For each of the two sizes of a block, of which the processor's is chosen.
namespace sse2 {
void MoveText(char*& out, const char*& at, const char* end);
}
namespace avx2 {
void MoveText(char*& out, const char*& at, const char* end);
}
#endif

}  // namespace lore
