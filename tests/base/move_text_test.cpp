#include "base/move_text.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "base/wide_blocks.h"
#include "gtest/gtest.h"

namespace lore {
namespace {

using Move = void (*)(char*& out, const char*& at, const char* end);

/// The one that is chosen for this processor, and each that it can run.
std::vector<Move> Moves() {
    std::vector<Move> moves = {MoveText};
#if defined(__x86_64__)
#if !defined(__AVX2__)
    moves.push_back(sse2::MoveText);
#endif
    if (HasWideBlocks())
        moves.push_back(avx2::MoveText);
#endif
    return moves;
}

TEST(MoveText, MovesTextDownToTheFirstControlByteAndNothingBehindIt) {
    std::mt19937 random(11);
    const std::string controls("\r\n\t\0\x1A\x01", 6);
    for (int round = 0; round < 4000; ++round) {
        std::string bytes(random() % 200, 'x');
        for (char& byte : bytes)
            byte = random() % 60 == 0 ? controls[random() % controls.size()] : static_cast<char>(0x1B + random() % 229);
        const size_t gap = random() % 40;
        const std::string file = std::string(gap, '-') + bytes;
        for (const Move move : Moves()) {
            std::string moved = file;
            char* out = moved.data();
            const char* at = moved.data() + gap;
            const char* const end = moved.data() + moved.size();
            move(out, at, end);
            const auto length = static_cast<size_t>(out - moved.data());
            ASSERT_EQ(at - moved.data(), static_cast<std::ptrdiff_t>(gap + length));
            ASSERT_EQ(moved.substr(0, length), bytes.substr(0, length));
            ASSERT_EQ(std::string(at, end), bytes.substr(length)) << "what is still to come was overwritten";
            const auto isControl = [](char c) { return static_cast<unsigned char>(c) <= 0x1A; };
            ASSERT_TRUE(std::none_of(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length), isControl));
            ASSERT_TRUE(bytes.size() - length < 64 || isControl(bytes[length])) << "stopped early";
        }
    }
}

}  // namespace
}  // namespace lore
